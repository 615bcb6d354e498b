#include "Player.h"

#include "Pattern.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

using Json = nlohmann::json;

constexpr std::chrono::seconds kLongest(60); // only failures wait that long

[[noreturn]] void Fail(const std::string& why)
{
    throw std::runtime_error(why);
}

std::pair<std::string, std::string> Split(const std::string& text)
{
    const size_t end = text.find_first_of(" \n");
    return end == std::string::npos ? std::pair{text, std::string()}
                                    : std::pair{text.substr(0, end), text.substr(end + 1)};
}

Json Parsed(const std::string& text)
{
    Json value = Json::parse(text, nullptr, false);
    if (value.is_discarded())
        Fail("not JSON: " + text);
    return value;
}

std::string Shown(const Json& value)
{
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string LanguageOf(const std::string& file)
{
    const std::string suffix = std::filesystem::path(file).extension();
    if (suffix == ".c" || suffix == ".h")
        return "c";
    if (suffix == ".m")
        return "objective-c";
    return suffix == ".mm" ? "objective-cpp" : "cpp";
}

} // namespace

void Player::Play(const TranscriptLine& line)
{
    const std::string& rest = line.rest;
    const std::map<std::string, std::function<void()>> kLines = {
        {"file", [&] { stage.Write(Split(rest).first, Split(rest).second + "\n"); }},
        {"delete", [&] { std::filesystem::remove_all(stage.Root() + "/" + rest); }},
        {"rename", [&] { Rename(rest); }},
        {"link", [&] { std::filesystem::create_symlink(Split(rest).second, stage.Root() + "/" + Split(rest).first); }},
        {"content",
         [&] {
             if (const auto mismatch = Mismatch(Split(rest).second, Content(Split(rest).first)))
                 Fail(*mismatch);
         }},
        {"run", [&] { arguments = rest; }},
        {"environment", [&] { environment.push_back(Split(rest)); }},
        {"automatic", [&] { automatic[Split(rest).first] = stage.Filled(Parsed(Split(rest).second)); }},
        {"by-hand", [&] { byHand.insert(rest); }},
        {"> begin", [&] { Begin(rest); }},
        {"> request", [&] { SendParams(rest, true); }},
        {"> notify", [&] { SendParams(rest, false); }},
        {"> open", [&] { Open(rest); }},
        {"> change", [&] { Change(rest); }},
        {"> answer",
         [&] {
             Answer({{"result", stage.Filled(Parsed(rest))}});
         }},
        {"> refuse",
         [&] {
             Answer({{"error", {{"code", std::stoi(rest)}, {"message", "refused"}}}});
         }},
        {"> body", [&] { SendBody(stage.Filled(rest)); }},
        {"> bytes", [&] { Start(), server->SendBytes(Parsed(rest)); }},
        {"> close", [&] { server->CloseInput(); }},
        {"> signal", [&] { server->Signal(std::stoi(rest)); }},
        {"> until", [&] { repeated = rest; }},
        {"< result", [&] { ExpectAnswer(rest, "result"); }},
        {"< error", [&] { ExpectAnswer(rest, "error"); }},
        {"< notify", [&] { ExpectMessage(rest, false); }},
        {"< request", [&] { ExpectMessage(rest, true); }},
        {"< none", [&] { ExpectNone(rest); }},
        {"< exit", [&] { ExpectExit(rest); }},
    };
    const auto found = kLines.find(line.what);
    if (found == kLines.end())
        Fail("no line begins with '" + line.what + "'");
    found->second();
}

void Player::Start()
{
    if (server)
        return;
    std::filesystem::create_directories(stage.Root());
    std::filesystem::create_directories(stage.Home());
    ::setenv("HOME", stage.Home().c_str(), 1);
    ::unsetenv("XDG_CACHE_HOME");
    for (const auto& [name, value] : environment)
        ::setenv(name.c_str(), stage.Filled(value).c_str(), 1);
    std::vector<std::string> command = {program, "lsp"};
    std::istringstream words(stage.Filled(arguments));
    for (std::string word; words >> word;)
        command.push_back(word);
    server.emplace(command, stage.Root());
}

void Player::Rename(const std::string& rest) const
{
    std::filesystem::rename(stage.Root() + "/" + Split(rest).first, stage.Root() + "/" + Split(rest).second);
}

std::string Player::Content(const std::string& file) const
{
    std::ifstream in(stage.Root() + "/" + file, std::ios::binary);
    if (!in)
        Fail(file + " cannot be read");
    return {std::istreambuf_iterator<char>(in), {}};
}

void Player::Send(const Json& message)
{
    Start();
    rules.Sent(message);
    server->Send(message);
}

void Player::SendBody(const std::string& body)
{
    Start();
    const Json message = Json::parse(body, nullptr, false);
    rules.Sent(message);
    server->SendBytes("Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
}

// The headers of the system take long to index, and few sessions are about them.
void Player::Begin(const std::string& rest)
{
    Json params = {{"processId", nullptr},
                   {"rootUri", "$uri"},
                   {"capabilities", Json::object()},
                   {"initializationOptions", {{"systemHeaders", false}}}};
    if (!rest.empty())
        params.merge_patch(Parsed(rest));
    Send({{"jsonrpc", "2.0"}, {"id", ++lastId}, {"method", "initialize"}, {"params", stage.Filled(params)}});
    if (const Json answer = WaitForAnswer(lastId); !answer.contains("result"))
        Fail("'initialize' is refused: " + Shown(answer));
    Send({{"jsonrpc", "2.0"}, {"method", "initialized"}, {"params", Json::object()}});
}

// "@mark", "FILE", JSON, or one of the first two with JSON that adds to it.
Json Player::Params(const std::string& words) const
{
    if (words.empty() || words[0] == '{' || words[0] == '[' || words[0] == '"')
        return words.empty() ? Json() : stage.Filled(Parsed(words));
    const auto [first, more] = Split(words);
    Json params = stage.Subject(first);
    if (!more.empty())
        params.merge_patch(stage.Filled(Parsed(more)));
    return params;
}

void Player::SendParams(const std::string& rest, bool isRequest)
{
    const auto [method, words] = Split(rest);
    Json message = {{"jsonrpc", "2.0"}, {"method", method}};
    if (isRequest)
        message["id"] = ++lastId;
    if (const Json params = Params(words); !params.is_null())
        message["params"] = params;
    isShutDown = isShutDown || method == "shutdown";
    Send(message);
}

void Player::Open(const std::string& rest)
{
    const auto [file, language] = Split(rest);
    versions[file] = 1;
    Json item = stage.Subject(file)["textDocument"];
    item["languageId"] = language.empty() ? LanguageOf(file) : language;
    item["version"] = 1;
    item["text"] = stage.Text(file);
    Send({{"jsonrpc", "2.0"}, {"method", "textDocument/didOpen"}, {"params", {{"textDocument", item}}}});
}

// FILE [{"range": "@a..b", "text": "..."}]
void Player::Change(const std::string& rest)
{
    const auto [file, changes] = Split(rest);
    Json params = stage.Subject(file);
    params["textDocument"]["version"] = ++versions[file];
    params["contentChanges"] = stage.Filled(Parsed(changes));
    Send({{"jsonrpc", "2.0"}, {"method", "textDocument/didChange"}, {"params", params}});
}

void Player::Answer(const Json& answer)
{
    Json message = {{"jsonrpc", "2.0"}, {"id", taken}};
    message.update(answer);
    Send(message);
}

bool Player::Receive()
{
    const std::optional<Json> message = server->Receive(kLongest);
    if (!message) {
        if (!server->IsAtEnd())
            Fail("the server sends nothing");
        return false;
    }
    rules.Received(*message);
    if (!message->contains("method")) {
        answers[(*message)["id"].dump()].push_back(*message);
        return true;
    }
    others.push_back(*message);
    if (message->contains("id") && !byHand.contains((*message)["method"]))
        AnswerByItself(*message);
    return true;
}

void Player::AnswerByItself(const Json& request)
{
    const auto found = automatic.find(request["method"]);
    const Json result = found == automatic.end() ? Json() : found->second;
    Send({{"jsonrpc", "2.0"}, {"id", request["id"]}, {"result", result}});
}

Json Player::WaitForAnswer(const Json& id)
{
    std::deque<Json>& come = answers[id.dump()];
    while (come.empty())
        if (!Receive())
            Fail("the server ended without an answer to " + id.dump());
    Json answer = come.front();
    come.pop_front();
    return answer;
}

// [#ID] PATTERN, where an error is its code, or its code and its text.
void Player::ExpectAnswer(const std::string& given, const char* member)
{
    Json id = lastId;
    std::string rest = given;
    if (rest.starts_with('#')) {
        id = Parsed(Split(rest).first.substr(1));
        rest = Split(given).second;
    }
    Json pattern = {{"...", "..."}};
    if (std::string(member) == "error") {
        const auto [code, text] = Split(rest);
        pattern["code"] = Parsed(code);
        if (!text.empty())
            pattern["message"] = stage.Filled(Parsed(text));
    } else {
        pattern = stage.Filled(Parsed(rest));
    }
    const auto limit = std::chrono::steady_clock::now() + kLongest;
    for (;;) {
        if (!repeated.empty()) {
            SendParams(repeated, true);
            id = lastId;
        }
        const Json answer = WaitForAnswer(id);
        std::optional<std::string> mismatch = "the answer is " + Shown(answer);
        if (answer.contains(member))
            mismatch = Mismatch(pattern, answer[member]);
        if (mismatch && (repeated.empty() || std::chrono::steady_clock::now() > limit))
            Fail(*mismatch);
        if (!mismatch)
            break;
    }
    repeated.clear();
}

// METHOD [PATTERN of the parameters]: takes the first such message.
void Player::ExpectMessage(const std::string& rest, bool isRequest)
{
    const auto [method, words] = Split(rest);
    const Json pattern = words.empty() ? Json("...") : stage.Filled(Parsed(words));
    std::string seen;
    for (size_t at = 0;; ++at) {
        while (at == others.size()) // an answer may come first
            if (!Receive())
                Fail("the server ended without " + method + seen);
        const Json message = others[at];
        if (message["method"] != method || message.contains("id") != isRequest)
            continue;
        if (const auto mismatch = Mismatch(pattern, message.value("params", Json()))) {
            seen += "\n  not this one: " + *mismatch;
            continue;
        }
        taken = message.value("id", Json());
        others.erase(others.begin() + static_cast<std::ptrdiff_t>(at));
        return;
    }
}

// METHOD [PATTERN]: no such message has come so far, and no line has taken one.
void Player::ExpectNone(const std::string& rest)
{
    const auto [method, words] = Split(rest);
    const Json pattern = words.empty() ? Json("...") : stage.Filled(Parsed(words));
    for (const Json& message : others)
        if (message["method"] == method && !Mismatch(pattern, message.value("params", Json())))
            Fail("the server sent " + Shown(message));
}

void Player::ExpectExit(const std::string& rest)
{
    while (Receive()) {
    }
    const int status = server->WaitForExit(kLongest);
    if (std::to_string(status) != rest)
        Fail("the exit status is " + std::to_string(status));
    if (isShutDown)
        rules.Ended();
    hasEnded = true;
}

void Player::Finish()
{
    if (!server || hasEnded)
        return;
    if (!isShutDown) {
        SendParams("shutdown", true);
        WaitForAnswer(lastId);
    }
    SendParams("exit", false);
    ExpectExit("0");
}
