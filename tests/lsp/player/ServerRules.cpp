#include "ServerRules.h"

#include <stdexcept>

namespace {

using Json = nlohmann::json;

[[noreturn]] void Break(const std::string& rule, const Json& message)
{
    throw std::runtime_error(rule + ": " + message.dump(-1, ' ', false, Json::error_handler_t::replace));
}

void Need(bool holds, const std::string& rule, const Json& message)
{
    if (!holds)
        Break(rule, message);
}

bool HasOnly(const Json& message, const std::set<std::string>& names)
{
    for (const auto& [name, value] : message.items())
        if (!names.contains(name))
            return false;
    return true;
}

} // namespace

void ServerRules::Check(const std::string& name, const Json& value) const
{
    if (const std::optional<std::string> problem = structure.Problem(name, value))
        Break(*problem, value);
}

void ServerRules::Sent(const Json& message)
{
    if (!message.is_object())
        return;
    const bool hasMethod = message.contains("method") && message["method"].is_string();
    const Json id = message.value("id", Json());
    const bool isAnswer = message.contains("result") || message.contains("error");
    if (!isAnswer && (id.is_number_integer() || id.is_string()))
        open[id.dump()] = hasMethod ? message["method"] : Json("");
    if (hasMethod && message["method"] == "initialized")
        hasBegun = true;
    if (isAnswer && asked.contains(id.dump())) {
        if (message.contains("result") && !asked[id.dump()].empty())
            progress[asked[id.dump()]];
        asked.erase(id.dump());
    }
    if (hasMethod && message.contains("params") && message["params"].is_object())
        for (const char* const token : {"workDoneToken", "partialResultToken"})
            if (message["params"].contains(token))
                progress[message["params"][token].dump()];
}

void ServerRules::Received(const Json& message)
{
    Need(message.is_object() && message.value("jsonrpc", Json()) == "2.0", "not JSON-RPC 2.0", message);
    if (!message.contains("method"))
        return Answered(message);
    Need(message["method"].is_string(), "a method is a string", message);
    Need(HasOnly(message, {"jsonrpc", "id", "method", "params"}), "members that JSON-RPC does not have", message);
    if (message.contains("id"))
        Asked(message);
    else
        Notified(message);
}

void ServerRules::Answered(const Json& message)
{
    Need(HasOnly(message, {"jsonrpc", "id", "result", "error"}), "members that JSON-RPC does not have", message);
    Need(message.contains("id"), "an answer has an id", message);
    Need(message.contains("result") != message.contains("error"), "an answer has a result or an error", message);
    if (message.contains("error"))
        Check("Error", message["error"]);
    if (message["id"].is_null())
        return Need(message.contains("error"), "only an error has no id", message);
    const auto request = open.find(message["id"].dump());
    Need(request != open.end(), "an answer to a request that is not open", message);
    if (message.contains("result"))
        Check("result " + request->second, message["result"]);
    isInitialized = isInitialized || (request->second == "initialize" && message.contains("result"));
    open.erase(request);
}

void ServerRules::Asked(const Json& message)
{
    const std::string method = message["method"];
    Need(message["id"].is_number_integer() || message["id"].is_string(), "an id is a number or a string", message);
    Need(ids.insert(message["id"].dump()).second, "each request has an id of its own", message);
    Check("request " + method, message.value("params", Json()));
    Need(hasBegun, "requests come only after 'initialized'", message);
    const bool makesToken = method == "window/workDoneProgress/create";
    asked[message["id"].dump()] = makesToken ? message["params"]["token"].dump() : "";
}

void ServerRules::Notified(const Json& message)
{
    const std::string method = message["method"];
    Check("notify " + method, message.value("params", Json()));
    Need(isInitialized || method == "window/logMessage" || method == "window/showMessage",
         "only log and show come before the answer to 'initialize'", message);
    if (method == "$/progress")
        Progressed(message["params"]);
}

void ServerRules::Progressed(const Json& params)
{
    const auto found = progress.find(params["token"].dump());
    Need(found != progress.end(), "progress for a token that nobody has created", params);
    const Json& value = params["value"];
    if (!value.is_object() || !value.contains("kind"))
        return; // a part of a result
    Check("WorkDone", value);
    Progress& known = found->second;
    Need(!known.ended, "progress ends once", params);
    Need(known.begun == (value["kind"] != "begin"), "progress begins once, and first", params);
    known.begun = true;
    known.ended = value["kind"] == "end";
    const unsigned percentage = value.value("percentage", known.percentage);
    Need(percentage >= known.percentage && percentage <= 100, "percentages never fall and end at 100", params);
    known.percentage = percentage;
}

void ServerRules::Ended() const
{
    for (const auto& [id, method] : open)
        throw std::runtime_error("request " + id + " (" + method + ") was never answered");
    for (const auto& [token, each] : progress)
        if (each.begun && !each.ended)
            throw std::runtime_error("the progress " + token + " never ended");
}
