#include "tests/lsp/load/LoadClient.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

using Json = nlohmann::json;

namespace {

std::string MadeTree(const TempDirectory& directory)
{
    std::filesystem::create_directories(directory / "tree");
    return directory / "tree";
}

// The sum of these lines of a file below /proc.
long Kilobytes(pid_t process, const std::string& file, const std::string& names)
{
    std::ifstream lines("/proc/" + std::to_string(process) + "/" + file);
    long sum = 0;
    for (std::string word; lines >> word;) {
        long value = 0;
        if (names.find(" " + word + " ") != std::string::npos) {
            lines >> value;
            sum += value;
        }
    }
    if (sum == 0)
        throw std::runtime_error("the memory of the server is not known");
    return sum;
}

} // namespace

LoadClient::LoadClient(const TempDirectory& directory, int errors)
    : root("file://" + MadeTree(directory)),
      server({WREN_PROGRAM, "lsp", "--home", directory.Path()}, directory / "tree", errors)
{
}

void LoadClient::Begin(const Json& capabilities)
{
    Ask("initialize", {{"processId", nullptr},
                       {"rootUri", root},
                       {"capabilities", capabilities},
                       {"initializationOptions", {{"systemHeaders", false}}}});
    Tell("initialized", Json::object());
}

int LoadClient::End()
{
    Ask("shutdown", nullptr);
    Tell("exit", nullptr);
    return server.WaitForExit(kLongest);
}

Json LoadClient::Notification(const char* method, const Json& params)
{
    return {{"jsonrpc", "2.0"}, {"method", method}, {"params", params}};
}

void LoadClient::Tell(const char* method, const Json& params)
{
    server.Send(Notification(method, params));
}

int LoadClient::Request(const char* method, const Json& params)
{
    Json message = Notification(method, params);
    message["id"] = ++lastId;
    server.Send(message);
    return lastId;
}

Json LoadClient::WaitForAnswer(int id)
{
    for (;;) {
        const std::optional<Json> message = server.Receive(kLongest);
        if (!message)
            throw std::runtime_error("request " + std::to_string(id) + " has no answer");
        if (message->contains("method") || message->value("id", Json()) != id)
            continue;
        if (!message->contains("result"))
            throw std::runtime_error("request " + std::to_string(id) + " is refused: " + message->dump());
        return message->at("result");
    }
}

Json LoadClient::Ask(const char* method, const Json& params)
{
    return WaitForAnswer(Request(method, params));
}

void LoadClient::Open(const std::string& uri, const std::string& text)
{
    Tell("textDocument/didOpen",
         {{"textDocument", {{"uri", uri}, {"languageId", "c"}, {"version", 1}, {"text", text}}}});
}

void LoadClient::Replace(const std::string& uri, long version, int line, const std::string& text)
{
    const Json range = {{"start", {{"line", line}, {"character", 0}}},
                        {"end", {{"line", line}, {"character", 1000000}}}};
    Tell("textDocument/didChange", {{"textDocument", {{"uri", uri}, {"version", version}}},
                                    {"contentChanges", {{{"range", range}, {"text", text}}}}});
}

long LoadClient::Memory()
{
    return Kilobytes(server.Process(), "smaps_rollup", " Private_Dirty: Swap: ");
}

long LoadClient::PeakMemory()
{
    return Kilobytes(server.Process(), "status", " VmHWM: ");
}
