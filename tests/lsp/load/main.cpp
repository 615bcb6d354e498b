// lsp_run CHANGES: a long day with the language server. One text after the other is typed in, with questions now and
// then; the memory of the server must not grow, and every question must be answered.
#include "tests/lsp/load/LoadClient.h"
#include "tests/support/TempDirectory.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <random>
#include <stdexcept>
#include <string>

namespace {

using Json = nlohmann::json;

constexpr int kTexts = 20;
constexpr int kLines = 300;
constexpr int kChangesPerQuestion = 50;

class Day {
public:
    explicit Day(const TempDirectory& tree) : client(tree)
    {
        client.Begin();
        client.Ask("workspace/executeCommand", {{"command", "wren.index"}});
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
        client.Tell("textDocument/didChange",
                    {{"textDocument", {{"uri", Uri(text)}, {"version", number + 2}}},
                     {"contentChanges", {{{"range", range}, {"text", number % 2 != 0 ? "" : "x"}}}}});
        if (number % kChangesPerQuestion == kChangesPerQuestion - 1)
            Question(text, line);
    }

    long Memory() { return client.Memory(); }
    int End() { return client.End(); }

private:
    std::string Uri(int text) const { return client.Uri("text" + std::to_string(text) + ".c"); }

    void Open(int text)
    {
        std::string content;
        for (int line = 0; line < kLines; ++line)
            content += "int f" + std::to_string(text) + "_" + std::to_string(line) + "(int a) { return a; }\n";
        client.Open(Uri(text), content);
    }

    void Question(int text, int line)
    {
        const Json place = {{"textDocument", {{"uri", Uri(text)}}}, {"position", {{"line", line}, {"character", 6}}}};
        client.Ask("textDocument/definition", place);
    }

    LoadClient client;
    std::minstd_rand random{4711};
    Json last;
    Json lastEnd;
};

int Run(long changes)
{
    const TempDirectory tree;
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
