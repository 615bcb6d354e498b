#include "wren/lsp/Server.h"

#include "wren/lsp/features/Methods.h"

#include <chrono>
#include <exception>
#include <utility>

namespace wren::lsp {

namespace {

constexpr size_t kWorkers = 4;

bool IsId(const Json& id)
{
    return id.is_number_integer() || id.is_string();
}

} // namespace

Server::Server(int input, int output, SessionOptions options)
    : reader(input), outbox(output), client(outbox), session(std::move(options), client), workers(kWorkers)
{
}

int Server::Run()
{
    std::string body;
    while (!ended) {
        const MessageReader::Outcome outcome = reader.Read(body);
        if (outcome == MessageReader::Outcome::Broken)
            client.Log(MessageType::Error, reader.Problem() + "; the server ends");
        if (outcome != MessageReader::Outcome::Message)
            break;
        Take(body);
    }
    {
        const std::lock_guard lock(mutex);
        for (const auto& [id, cancel] : running)
            cancel->Cancel();
    }
    workers.WaitUntilIdle();
    session.Close();
    constexpr std::chrono::seconds kLongestFarewell(1);
    outbox.Finish(kLongestFarewell);
    return state == State::ShutDown ? 0 : 1;
}

void Server::Take(const std::string& body)
{
    const Json message = Json::parse(body, nullptr, false);
    if (message.is_discarded())
        return Refuse(nullptr, FailureCode::ParseError, "the message is not JSON");
    const Json given = message.is_object() ? message.value("id", Json()) : Json();
    const Json id = IsId(given) ? given : Json();
    if (!message.is_object() || message.value("jsonrpc", Json()) != "2.0")
        return Refuse(id, FailureCode::InvalidRequest, "the message is not JSON-RPC 2.0");
    if (!message.contains("method"))
        return client.TakeAnswer(message);
    if (!message["method"].is_string() || (message.contains("id") && id.is_null()))
        return Refuse(id, FailureCode::InvalidRequest, "the method or the id cannot be used");
    if (message.contains("id"))
        return TakeRequest(message);
    try {
        TakeNotification(message["method"], message.value("params", Json::object()));
    } catch (const Failure& failure) {
        client.Log(MessageType::Warning, message["method"].get<std::string>() + ": " + failure.what());
    }
}

void Server::TakeRequest(const Json& message)
{
    const std::string method = message["method"];
    const Json& id = message["id"];
    const Json params = message.value("params", Json::object());
    if (state == State::ShutDown)
        return Refuse(id, FailureCode::InvalidRequest, "the server has been shut down");
    if (state == State::Before && method != "initialize")
        return Refuse(id, FailureCode::ServerNotInitialized, "the server is not initialized");
    if (state == State::Running && method == "initialize")
        return Refuse(id, FailureCode::InvalidRequest, "the server is initialized already");
    if (method == "shutdown")
        return ShutDown(id);
    if (method != "initialize")
        return Start(method, id, params);
    session.Initialize(params);
    state = State::Running;
    Answer(id, {{"capabilities", ServerCapabilities(session.Abilities())},
                {"serverInfo", {{"name", "wren"}, {"version", WREN_VERSION}}}});
}

void Server::TakeNotification(const std::string& method, const Json& params)
{
    if (method == "exit")
        ended = true;
    else if (state != State::Running)
        return;
    else if (method == "$/cancelRequest")
        Cancel(params);
    else
        session.Take(method, params);
}

void Server::Start(const std::string& method, const Json& id, const Json& params)
{
    const Handler handler = HandlerOf(method);
    if (handler == nullptr)
        return Refuse(id, FailureCode::MethodNotFound, "'" + method + "' is not known");
    auto cancel = std::make_shared<base::CancelToken>();
    {
        const std::lock_guard lock(mutex);
        running[id.dump()] = cancel;
    }
    workers.Add([this, handler, id, params, cancel, context = session.ContextFor(*cancel)] {
        try {
            context.CheckCancelled();
            Answer(id, handler(params, context));
        } catch (const Failure& failure) {
            Refuse(id, failure.code, failure.what());
        } catch (const std::exception& problem) { // out of memory
            Refuse(id, FailureCode::InternalError, problem.what());
        }
        const std::lock_guard lock(mutex);
        running.erase(id.dump());
    });
}

void Server::ShutDown(const Json& id)
{
    state = State::ShutDown;
    workers.WaitUntilIdle();
    session.Close();
    Answer(id, nullptr);
}

void Server::Cancel(const Json& params)
{
    const std::lock_guard lock(mutex);
    const auto found = running.find(Member<Json>(params, "id").dump());
    if (found != running.end())
        found->second->Cancel();
}

void Server::Answer(const Json& id, const Json& result)
{
    outbox.Send({{"jsonrpc", "2.0"}, {"id", id}, {"result", result}});
}

void Server::Refuse(const Json& id, FailureCode code, const std::string& why)
{
    outbox.Send({{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", static_cast<int>(code)}, {"message", why}}}});
}

} // namespace wren::lsp
