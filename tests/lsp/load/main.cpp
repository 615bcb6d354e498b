// lsp_run CHANGES: a long day with the language server. One text after the other is typed in, with questions now and
// then; the memory of the server must not grow, and every question must be answered.
#include "tests/lsp/player/Connection.h"
#include "tests/support/TempDirectory.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::json;

constexpr std::chrono::seconds kLongest(120); // only failures wait that long
constexpr int kTexts = 20;
constexpr int kLines = 300;
constexpr int kChangesPerQuestion = 50;

// Kilobytes that belong to the process alone, those that are swapped included.
long PrivateMemory(pid_t process)
{
    std::ifstream lines("/proc/" + std::to_string(process) + "/smaps_rollup");
    long sum = 0;
    for (std::string word; lines >> word;) {
        long value = 0;
        if (word == "Private_Dirty:" || word == "Swap:") {
            lines >> value;
            sum += value;
        }
    }
    if (sum == 0)
        throw std::runtime_error("the memory of the server is not known");
    return sum;
}

class Day {
public:
    explicit Day(const TempDirectory& tree)
        : root("file://" + tree.Path() + "/tree"),
          server({WREN_PROGRAM, "lsp", "--home", tree.Path()}, tree.Path() + "/tree")
    {
        Ask("initialize", {{"processId", nullptr},
                           {"rootUri", root},
                           {"capabilities", Json::object()},
                           {"initializationOptions", {{"systemHeaders", false}}}});
        Tell("initialized", Json::object());
        Ask("workspace/executeCommand", {{"command", "wren.index"}});
        for (int text = 0; text < kTexts; ++text)
            Open(text);
    }

    // A letter is typed, and taken back by the next change of the same text.
    void Change(long number)
    {
        const int text = static_cast<int>(number / 1000 % kTexts);
        const int line = static_cast<int>(random() % kLines);
        const Json start = {{"line", line}, {"character", 4}};
        Json end = start;
        if (number % 2 != 0)
            end["character"] = 5;
        const Json range = {{"start", number % 2 != 0 ? last : start}, {"end", number % 2 != 0 ? lastEnd : end}};
        last = start;
        lastEnd = {{"line", line}, {"character", 5}};
        Tell("textDocument/didChange",
             {{"textDocument", {{"uri", Uri(text)}, {"version", number + 2}}},
              {"contentChanges", {{{"range", range}, {"text", number % 2 != 0 ? "" : "x"}}}}});
        if (number % kChangesPerQuestion == kChangesPerQuestion - 1)
            Question(text, line);
    }

    long Memory() const { return PrivateMemory(server.Process()); }

    int End()
    {
        Ask("shutdown", nullptr);
        Tell("exit", nullptr);
        return server.WaitForExit(kLongest);
    }

private:
    std::string Uri(int text) const { return root + "/text" + std::to_string(text) + ".c"; }

    void Open(int text)
    {
        std::string content;
        for (int line = 0; line < kLines; ++line)
            content += "int f" + std::to_string(text) + "_" + std::to_string(line) + "(int a) { return a; }\n";
        Tell("textDocument/didOpen",
             {{"textDocument", {{"uri", Uri(text)}, {"languageId", "c"}, {"version", 1}, {"text", content}}}});
    }

    void Question(int text, int line)
    {
        const Json place = {{"textDocument", {{"uri", Uri(text)}}}, {"position", {{"line", line}, {"character", 6}}}};
        Ask("textDocument/definition", place);
    }

    void Tell(const char* method, const Json& params)
    {
        server.Send({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
    }

    void Ask(const char* method, const Json& params)
    {
        const int id = ++lastId;
        server.Send({{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}});
        for (;;) {
            const std::optional<Json> message = server.Receive(kLongest);
            if (!message)
                throw std::runtime_error(std::string(method) + " has no answer");
            if (message->value("id", Json()) == id) {
                if (!message->contains("result"))
                    throw std::runtime_error(std::string(method) + " is refused: " + message->dump());
                return;
            }
        }
    }

    const std::string root;
    Connection server;
    int lastId = 0;
    std::minstd_rand random{4711};
    Json last;
    Json lastEnd;
};

int Run(long changes)
{
    const TempDirectory tree;
    std::filesystem::create_directory(tree / "tree");
    Day day(tree);
    long before = 0;
    for (long number = 0; number < changes; ++number) {
        if (number == changes / 4)
            before = day.Memory();
        day.Change(number);
    }
    const long after = day.Memory();
    std::cout << "private memory: " << before << " kB after a quarter, " << after << " kB at the end\n";
    constexpr long kMostGrowth = 8192;          // kB: heaps of threads settle slowly
    const bool isSanitized = *SANITIZE != '\0'; // a sanitizer keeps freed memory
    if (!isSanitized && after > before + kMostGrowth)
        throw std::runtime_error("the server's memory grows");
    return day.End();
}

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN);
    const long changes = argc == 2 ? std::atol(argv[1]) : 0;
    if (changes < 4) {
        std::cerr << "usage: lsp_run CHANGES\n";
        return 2;
    }
    try {
        return Run(changes);
    } catch (const std::exception& problem) {
        std::cerr << "lsp_run: " << problem.what() << "\n";
        return 1;
    }
}
