// Loads all names of tags files into memory in one of several ways. Each run is a process, so that its memory can be
// measured.
//
//     cache_load_bench cache LOCAL SYSTEM    the way completion loads them
//     cache_load_bench plain LOCAL SYSTEM    all names with their scopes in a plain vector of strings
//     cache_load_bench generate sorted|shuffled COUNT FILE
//
// Prints JSON: the seconds, and the additional kilobytes of memory in use afterwards and at the peak.

#include "tags/CompletionCache.h"
#include "tags/Tags.h"
#include "vetch/storage/BEntry.h"
#include "vetch/support/FThread.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

long ResidentKilobytes(const char* field)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.compare(0, std::strlen(field), field) == 0)
            return std::atol(line.c_str() + std::strlen(field));
    return 0;
}

template <class Load>
void Measure(Load load)
{
    const long before = ResidentKilobytes("VmRSS:");
    const auto start = Clock::now();
    load();
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    std::printf(R"({"seconds": %.6f, "kilobytes": %ld, "peak": %ld})"
                "\n",
                seconds, ResidentKilobytes("VmRSS:") - before, ResidentKilobytes("VmHWM:") - before);
}

int Status(bool loaded)
{
    if (!loaded)
        std::fputs("no names were loaded\n", stderr);
    return loaded ? 0 : 1;
}

int LoadCache(const char* local, const char* system)
{
    CompletionCache cache;
    Measure([&] {
        const BEntry localEntry(local);
        const BEntry systemEntry(system);
        Tags tags(&localEntry, &systemEntry, "", false);
        cache.LoadIfNeeded(tags, true);
        vetch::JoinThreads();
    });
    std::vector<std::string> some;
    cache.GetCompletions("", some, 1);
    return Status(!some.empty());
}

// Returns the joined name on a line; "" when it has none.
std::string JoinedName(const char* line)
{
    const char* end = std::strchr(line, '\t');
    if (line[0] == '!' || end == nullptr)
        return "";
    for (const char* token : {"\tclass:", "\tnamespace:", "\tstruct:", "\tunion:"})
        if (const char* scope = std::strstr(end, token)) {
            std::string name(scope + std::strlen(token));
            if (!name.empty() && name.back() == '\n')
                name.pop_back();
            name += "::";
            return name.append(line, end);
        }
    return std::string(line, end);
}

void FillPlain(std::vector<std::string>& names, const char* path)
{
    FILE* file = std::fopen(path, "r");
    if (file == nullptr)
        return;
    char line[1024];
    while (std::fgets(line, sizeof line, file) != nullptr)
        if (std::string name = JoinedName(line); !name.empty())
            names.push_back(std::move(name));
    std::fclose(file);
}

int LoadPlain(const char* local, const char* system)
{
    std::vector<std::string> names;
    Measure([&] {
        FillPlain(names, local);
        FillPlain(names, system);
        std::sort(names.begin(), names.end());
        names.erase(std::unique(names.begin(), names.end()), names.end());
    });
    return Status(!names.empty());
}

// Four tags of each name, in four scopes; sorted as in a tags file, or shuffled.
int Generate(bool sorted, long count, const char* path)
{
    FILE* file = std::fopen(path, "w");
    if (file == nullptr)
        return 1;
    constexpr long kStep = 7919 * 104729; // a product of primes that do not divide a power of ten
    for (long i = 0; i < count; ++i) {
        const long tag = sorted ? i : static_cast<long>(static_cast<__int128>(i) * kStep % count);
        std::fprintf(file, "function%08ld\tsrc/part%ld/header.h\t%ld;\"\tf\tclass:library::Part%ld\n", tag / 4,
                     tag % 997, tag % 977 + 1, tag % 4 * 3 % 4);
    }
    return std::fclose(file) == 0 ? 0 : 1;
}

} // namespace

int main(int count, char** words)
{
    const std::string way = count > 1 ? words[1] : "";
    if (way == "cache" && count == 4)
        return LoadCache(words[2], words[3]);
    if (way == "plain" && count == 4)
        return LoadPlain(words[2], words[3]);
    if (way == "generate" && count == 5)
        return Generate(std::string(words[2]) == "sorted", std::atol(words[3]), words[4]);
    std::fputs("usage: cache_load_bench cache|plain LOCAL SYSTEM, or generate sorted|shuffled COUNT FILE\n", stderr);
    return 2;
}
