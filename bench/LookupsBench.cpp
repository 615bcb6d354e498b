// Measures lookups through the plug-in's bundle, without a screen.
//
//     lookups_bench lookups TAGS ROUNDS    of the symbols on standard input, one per line
//     lookups_bench first TAGS SYMBOL      the first lookup, and one pass over the file with mmap and memchr
//     lookups_bench start TAGS             from loading the bundle to an editor ready for lookups
//
// TAGS are the system's tags. Prints JSON, in microseconds: for each symbol the time until the list of matches is shown
// (median and 99th percentile), and the number of its matches.

#include "HeadlessEditor.h"
#include "scan/Predicates.h"
#include "vetch/app/Loop.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

// The items of the symbol dialog in the plug-in's interface file.
constexpr long kSymbolField = 1;
constexpr long kLookUpButton = 2;

double MicrosecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

// Counts what the plug-in opens: a single match is opened without a list.
class CountingFace : public BenchFace {
public:
    size_t Opened() const { return opened; }

    void OpenMatch(const std::string&, long) override { ++opened; }

private:
    size_t opened = 0;
};

// A name stands in a document; anything else is typed into the dialog.
bool IsName(const std::string& symbol)
{
    return std::all_of(symbol.begin(), symbol.end(), IsIDChar);
}

class User {
public:
    explicit User(const std::string& systemTags) : display(&face), editor(face, display)
    {
        const auto start = Clock::now();
        editor.Start(systemTags);
        started = MicrosecondsSince(start);
        std::string error;
        document = editor.TheHost().Open("/nowhere/a.mm", "", false, &error);
        if (document == nullptr)
            Fail(error);
    }

    double Started() const { return started; }

    double LookUp(const std::string& symbol)
    {
        CloseWindows();
        return IsName(symbol) ? LookUpInText(symbol) : LookUpInDialog(symbol);
    }

    // Counts the matches of the last lookup. A single match has been opened without a list.
    size_t CountFound() const
    {
        for (const auto& window : display.Windows())
            if (window.visible && window.list)
                return window.list->items.size();
        return face.Opened() - opened;
    }

private:
    void CloseWindows()
    {
        editor.TheHost().Events().Dismissed();
        vetch::Settle();
        opened = face.Opened();
    }

    double LookUpInText(const std::string& name)
    {
        document->SetText(name);
        document->Select(document->Length(), document->Length());
        const auto start = Clock::now();
        editor.TheHost().Events().Command("SymbolLookup");
        vetch::Settle();
        return MicrosecondsSince(start);
    }

    double LookUpInDialog(const std::string& symbol)
    {
        editor.TheHost().Events().Command("SymbolLookupDialog");
        vetch::Settle();
        for (const auto& window : display.Windows())
            if (window.visible && !window.controls.empty()) {
                display.Enter(window.number, kSymbolField, symbol);
                const auto start = Clock::now();
                display.Press(window.number, kLookUpButton);
                vetch::Settle();
                return MicrosecondsSince(start);
            }
        Fail("the symbol dialog did not open");
    }

    CountingFace face;
    vetch::HeadlessDisplay display;
    HeadlessEditor editor;
    wren::Document* document = nullptr;
    double started = 0;
    size_t opened = 0;
};

void MeasureLookups(User& user, size_t rounds)
{
    for (std::string symbol; std::getline(std::cin, symbol);) {
        user.LookUp(symbol); // warms up
        std::vector<double> taken;
        for (size_t round = 0; round < rounds; ++round)
            taken.push_back(user.LookUp(symbol));
        std::sort(taken.begin(), taken.end());
        std::printf(R"({"symbol": "%s", "median": %.1f, "p99": %.1f, "found": %zu})"
                    "\n",
                    symbol.c_str(), taken[rounds / 2], taken[rounds * 99 / 100], user.CountFound());
    }
}

long gLines = 0; // of all passes: without a use, the compiler would remove the counting

// The least work of a program that has to see each line of a file.
double OnePass(const char* path)
{
    const auto start = Clock::now();
    const int file = ::open(path, O_RDONLY | O_CLOEXEC);
    struct stat status;
    if (file < 0 || ::fstat(file, &status) != 0)
        Fail(std::string(path) + ": cannot be read");
    const auto size = static_cast<size_t>(status.st_size);
    void* const mapped = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    ::close(file);
    if (mapped == MAP_FAILED)
        Fail(std::string(path) + ": cannot be mapped");
    const char* at = static_cast<const char*>(mapped);
    const char* const end = at + size;
    while (at < end) {
        const void* newline = std::memchr(at, '\n', static_cast<size_t>(end - at));
        at = newline != nullptr ? static_cast<const char*>(newline) + 1 : end;
        ++gLines;
    }
    ::munmap(mapped, size);
    return MicrosecondsSince(start);
}

} // namespace

int main(int count, char** words)
{
    const std::string way = count > 2 ? words[1] : "";
    if (way == "lookups" && count == 4) {
        User user(words[2]);
        MeasureLookups(user, static_cast<size_t>(std::max(1L, std::atol(words[3]))));
        return 0;
    }
    if (way == "first" && count == 4) {
        User user(words[2]);
        OnePass(words[2]); // brings the file into the system's page cache
        const double before = OnePass(words[2]);
        const double first = user.LookUp(words[3]);
        const size_t found = user.CountFound();
        const double pass = std::min(before, OnePass(words[2]));
        std::printf(R"({"first": %.1f, "found": %zu, "pass": %.1f, "second": %.1f, "lines": %ld})"
                    "\n",
                    first, found, pass, user.LookUp(words[3]), gLines / 3);
        return 0;
    }
    if (way == "start" && count == 3) {
        std::printf(R"({"start": %.1f})"
                    "\n",
                    User(words[2]).Started());
        return 0;
    }
    std::fputs(
        "usage: lookups_bench lookups TAGS ROUNDS, or lookups_bench first TAGS SYMBOL, or lookups_bench start TAGS\n",
        stderr);
    return 2;
}
