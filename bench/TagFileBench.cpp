// Measures searches in a tags file that is known to be sorted, and complete readings. The peers are a bare loop that
// reads the lines and compares their first bytes, and one that only looks for line ends in the mapped file.
//
// WREN_BENCH_TAGS names the file; the default is a small one made for the run.

#include "tags/TagFile.h"
#include "tagsfile/KnownFiles.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/EntryRef.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

// Half a million tags of an imaginary library, whose sources do not exist.
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

// The place of the file; a generated file is removed at the end.
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

// Keeps the records of tags files out of the user's cache.
const struct OwnCache {
    OwnCache()
    {
        std::string directory = "/tmp/wren-bench-cache-XXXXXX";
        path = mkdtemp(directory.data());
        setenv("XDG_CACHE_HOME", path.c_str(), 1);
    }
    ~OwnCache()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::string path;
} kOwnCache;

void ForgetTags()
{
    const int file = open(BenchTags::Path().c_str(), O_RDONLY | O_CLOEXEC);
    tagsfile::KnownFiles::Instance().Forget(base::FileIdentity::OfPlainFile(file).value());
    close(file);
}

// The least time that a reading of all lines can take.
void Mapped(benchmark::State& state)
{
    for (auto _ : state) {
        const int file = open(BenchTags::Path().c_str(), O_RDONLY | O_CLOEXEC);
        struct stat status;
        fstat(file, &status);
        const auto size = static_cast<size_t>(status.st_size);
        void* const mapped = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        const char* const end = static_cast<const char*>(mapped) + size;
        long lines = 0;
        for (auto line = static_cast<const char*>(mapped); line != nullptr && line < end; ++lines) {
            const void* lineEnd = std::memchr(line, '\n', static_cast<size_t>(end - line));
            line = lineEnd == nullptr ? nullptr : static_cast<const char*>(lineEnd) + 1;
        }
        benchmark::DoNotOptimize(lines);
        munmap(mapped, size);
        close(file);
    }
}

// The first search in an unknown file.
void FirstSearch(benchmark::State& state)
{
    const BEntry tags(BenchTags::Path().c_str());
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    for (auto _ : state) {
        ForgetTags();
        TagFile file(&tags, "no_such_name", true);
        file.Rewind();
        const bool found = file.NextMatch(name, qualifier, kind, ref, line, false, TagFile::ExactMatch());
        file.Done();
        state.counters["found"] = found;
    }
}

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
    // The first search may have to read all of the file; later ones know it.
    TagFile first(&tags, pattern, true);
    first.Rewind();
    while (first.NextMatch(name, qualifier, kind, ref, line, false, match)) {
    }
    first.Done();
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
BENCHMARK(Mapped)->Unit(benchmark::kMillisecond);
BENCHMARK(FirstSearch)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, exact, "push_back", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, partial, "push_ba", kPartial)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, qualified, "boost::container::vector", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, selector, "initWithFrame:", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, template, "vector<int>", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, absent, "no_such_name", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, before_the_first, " ", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, behind_the_last, "\xff", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, destructor, "~vector", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, operator_less, "operator <", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, frequent_elsewhere, "NoSuchScope::type", kExact)->Unit(benchmark::kMillisecond);
BENCHMARK(Names)->Unit(benchmark::kMillisecond);
BENCHMARK(Paths)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
