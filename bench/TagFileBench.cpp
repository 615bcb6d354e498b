// Searches of a whole tags file, beside a bare loop that reads its lines and compares their first bytes.
//
// The file is the one that WREN_BENCH_TAGS names, or a small one made for the run.

#include "tags/TagFile.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/EntryRef.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

// Half a million tags of a made-up library, whose sources do not exist.
std::string MakeTags()
{
    std::string path = "/tmp/wren-bench-tags-XXXXXX";
    close(mkstemp(path.data()));
    std::ofstream tags(path);
    for (int i = 1'000'000; i < 1'500'000; ++i)
        tags << "function" << i << "\t/usr/include/library/part" << i % 1000 << "/header.h\t" << i % 977
             << ";\"\tp\tclass:library::part\n";
    return path;
}

// Where the file is; one that was made is removed at the end.
class BenchTags {
public:
    BenchTags() : given(std::getenv("WREN_BENCH_TAGS")), path(given != nullptr ? given : MakeTags()) {}
    ~BenchTags()
    {
        if (given == nullptr)
            unlink(path.c_str());
    }
    static const std::string& Path()
    {
        static const BenchTags tags;
        return tags.path;
    }

private:
    const char* given;
    std::string path;
};

void Bare(benchmark::State& state)
{
    for (auto _ : state) {
        FILE* file = std::fopen(BenchTags::Path().c_str(), "r");
        char line[1024];
        long found = 0;
        while (std::fgets(line, sizeof line, file) != nullptr)
            found += std::memcmp(line, "push_back\t", 10) == 0;
        std::fclose(file);
        benchmark::DoNotOptimize(found);
    }
}

template <class Match>
void Search(benchmark::State& state, const char* pattern, Match match)
{
    const BEntry tags(BenchTags::Path().c_str());
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    for (auto _ : state) {
        TagFile file(&tags, pattern, true);
        if (!file.Rewind()) {
            state.SkipWithError("the tags file cannot be opened");
            break;
        }
        long found = 0;
        while (file.NextMatch(name, qualifier, kind, ref, line, false, match))
            ++found;
        file.Done();
        state.counters["found"] = static_cast<double>(found);
    }
}

void Names(benchmark::State& state)
{
    const BEntry tags(BenchTags::Path().c_str());
    std::string name;
    std::string qualifier;
    for (auto _ : state) {
        TagFile file(&tags, "", false);
        file.Rewind();
        long found = 0;
        while (file.Next(name, qualifier))
            ++found;
        file.Done();
        state.counters["found"] = static_cast<double>(found);
    }
}

void Paths(benchmark::State& state)
{
    const BEntry tags(BenchTags::Path().c_str());
    for (auto _ : state) {
        TagFile file(&tags, "", false);
        file.Rewind();
        std::vector<char*> paths;
        file.LoadPathCache(paths);
        file.Done();
        state.counters["found"] = static_cast<double>(paths.size());
        for (char* path : paths)
            std::free(path);
    }
}

constexpr TagFile::ExactMatch kExact;
constexpr TagFile::PartialMatch kPartial;

BENCHMARK(Bare)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, exact, "push_back", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, partial, "push_ba", kPartial)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, qualified, "boost::container::vector", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, selector, "initWithFrame:", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, template, "vector<int>", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, absent, "no_such_name", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, frequent_elsewhere, "NoSuchScope::type", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK(Names)->Unit(benchmark::kMillisecond);
BENCHMARK(Paths)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
