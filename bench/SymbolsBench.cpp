// Measures an index of symbols in the process.
//
//     symbols_bench update ROOT CACHE           makes or checks the index
//     symbols_bench first ROOT CACHE NAME       a new process's first answer by name
//     symbols_bench queries ROOT CACHE          queries by lot
//     symbols_bench mentions ROOT CACHE         all uses of a name with about 1,000 of them
//     symbols_bench change ROOT CACHE FILE      adds a function to the file, and waits for it in a watched index
//     symbols_bench idle ROOT CACHE             the private memory of a process that watches and answers
//     symbols_bench names ROOT CACHE            prints all names, once each
//     symbols_bench files ROOT CACHE            prints the paths of all files
//     symbols_bench growth STORE FILES          an index of generated files
//
// Prints JSON, one object per line; times are in milliseconds.

#include "resolve/Resolver.h"
#include "symbols/Index.h"
#include "symbols/store/Store.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
using Words = std::vector<std::string>;
using symbols::Limits;
using symbols::Snapshot;
using symbols::SnapshotPointer;

double MillisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

[[noreturn]] void Fail(const std::string& why)
{
    std::fprintf(stderr, "symbols_bench: %s\n", why.c_str());
    std::exit(1);
}

// Of this process, on all cores.
double ProcessorMilliseconds()
{
    timespec now = {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// The times of one operation. The processor's times say what a busy machine hides.
class Times {
public:
    template <class Operation>
    void Measure(const Operation& operation)
    {
        const double processor = ProcessorMilliseconds();
        const auto start = Clock::now();
        operation();
        clock.push_back(MillisecondsSince(start));
        processors.push_back(ProcessorMilliseconds() - processor);
    }
    void Add(const Times& others)
    {
        std::ranges::copy(others.clock, std::back_inserter(clock));
        std::ranges::copy(others.processors, std::back_inserter(processors));
    }

    void Print(const std::string& what, size_t found = 0)
    {
        if (clock.empty())
            Fail("nothing was measured: " + what);
        std::ranges::sort(clock);
        std::ranges::sort(processors);
        const size_t late = clock.size() * 99 / 100;
        std::printf(R"({"what": "%s", "median": %.5f, "p99": %.5f, "processor_p99": %.5f, "rounds": %zu, )"
                    R"("found": %zu})"
                    "\n",
                    what.c_str(), clock[clock.size() / 2], clock[late], processors[late], clock.size(), found);
        std::fflush(stdout);
    }

private:
    std::vector<double> clock;
    std::vector<double> processors;
};

tagging::Settings TaggingSettings()
{
    tagging::Settings settings;
    settings.ctags.program = "/usr/bin/ctags-universal";
    settings.ctags.directory = settings.ctags.temporaries = "/tmp";
    settings.ctags.prototypes = true;
    settings.jobs = std::max(1u, std::thread::hardware_concurrency());
    return settings;
}

symbols::IndexOptions OptionsFor(const std::string& root, const std::string& cache)
{
    symbols::IndexOptions options;
    options.root = root;
    options.cache = cache;
    options.tagging = TaggingSettings();
    return options;
}

SnapshotPointer CurrentOf(const symbols::Index& index)
{
    const SnapshotPointer snapshot = index.Current();
    if (snapshot == nullptr)
        Fail("there is no index in " + index.Directory());
    return snapshot;
}

void Update(symbols::Index& index)
{
    const base::CancelToken never;
    const auto start = Clock::now();
    const auto result = index.Update({}, never);
    if (!result)
        Fail(result.Failure().Message());
    const Snapshot::Size size = CurrentOf(index)->Totals();
    std::printf(R"({"what": "update", "median": %.3f, "parsed": %zu, "failed": %zu, "files": %llu, "symbols": %llu,)"
                R"( "bytes": %llu})"
                "\n",
                MillisecondsSince(start), result->parsed, result->failed, static_cast<unsigned long long>(size.files),
                static_cast<unsigned long long>(size.symbols), static_cast<unsigned long long>(size.bytes));
}

std::vector<symbols::FileNumber> FilesOf(const Snapshot& snapshot)
{
    std::vector<symbols::FileNumber> files;
    snapshot.ForEachFile([&files](symbols::FileNumber number, const symbols::File&) {
        files.push_back(number);
        return true;
    });
    return files;
}

std::set<std::string> AllNames(const Snapshot& snapshot)
{
    std::set<std::string> names;
    for (const symbols::FileNumber file : FilesOf(snapshot))
        for (const symbols::Symbol& symbol : snapshot.OfFile(file).found)
            names.emplace(symbol.name);
    return names;
}

// Names and scopes of an index, drawn by lot.
class Lot {
public:
    explicit Lot(const Snapshot& snapshot) : snapshot(snapshot), files(FilesOf(snapshot))
    {
        if (files.empty())
            Fail("the index is empty");
        std::set<std::string> once;
        for (size_t tries = 0; once.size() < 5000 && tries < 50'000; ++tries) {
            const symbols::Symbols symbols = snapshot.OfFile(files[Below(files.size())]);
            for (int pick = 0; pick < 3 && !symbols.found.empty(); ++pick)
                once.emplace(symbols.found[Below(symbols.found.size())].name);
        }
        names.assign(once.begin(), once.end());
        std::ranges::shuffle(names, random);
    }

    size_t Below(size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(random); }
    const Words& Names() const { return names; }

    // Scopes with about 100 members.
    Words LargeScopes(size_t wanted)
    {
        std::map<std::string, size_t> sizes;
        for (size_t tries = 0; sizes.size() < wanted && tries < 4 * files.size(); ++tries)
            for (const symbols::Symbol& symbol : snapshot.OfFile(files[Below(files.size())]).found) {
                const std::string scope(symbol.scope);
                if (scope.empty() || sizes.contains(scope))
                    continue;
                const size_t members = snapshot.InScope(scope, {.results = 121}).found.size();
                if (members >= 90 && members <= 120)
                    sizes[scope] = members;
            }
        Words scopes;
        for (const auto& [scope, members] : sizes)
            scopes.push_back(scope);
        return scopes;
    }

    // Letters of a name in their order, starting with its first one in half of the patterns.
    std::string Pattern(size_t length)
    {
        for (;;) {
            const std::string& name = names[Below(names.size())];
            if (name.size() < length)
                continue;
            std::vector<size_t> places(name.size());
            for (size_t i = 0; i < places.size(); ++i)
                places[i] = i;
            std::ranges::shuffle(places, random);
            places.resize(length);
            std::ranges::sort(places);
            if (Below(2) == 0)
                places[0] = 0;
            std::string pattern;
            for (const size_t place : places)
                pattern += name[place];
            return pattern;
        }
    }

private:
    const Snapshot& snapshot;
    const std::vector<symbols::FileNumber> files;
    std::mt19937_64 random{3};
    Words names;
};

template <class Ask>
void Measure(const std::string& what, const Words& questions, const Ask& ask)
{
    for (const std::string& question : questions)
        ask(question);
    Times times;
    size_t found = 0;
    for (const std::string& question : questions)
        times.Measure([&] { found += ask(question); });
    times.Print(what, found);
}

void MeasureQueries(const Snapshot& snapshot)
{
    Lot lot(snapshot);
    Measure("by name", lot.Names(), [&](const std::string& name) { return snapshot.ByName(name, {}).found.size(); });
    Words absent, prefixes;
    for (const std::string& name : lot.Names()) {
        absent.push_back(name + "_absent");
        prefixes.push_back(name.substr(0, 2 + lot.Below(4)));
    }
    Measure("by name, absent", absent, [&](const std::string& name) { return snapshot.ByName(name, {}).found.size(); });
    Measure("by prefix", prefixes,
            [&](const std::string& prefix) { return snapshot.ByPrefix(prefix, {.results = 100}).found.size(); });
    Measure("members", lot.LargeScopes(200),
            [&](const std::string& scope) { return snapshot.InScope(scope, {}).found.size(); });
    Times all;
    Words patterns;
    for (size_t length = 2; length <= 12; ++length) {
        Times times;
        size_t found = 0;
        for (int pick = 0; pick < 20; ++pick) {
            patterns.push_back(lot.Pattern(length));
            times.Measure([&] { found += snapshot.Fuzzy(patterns.back(), {.results = 100}).found.size(); });
        }
        all.Add(times);
        times.Print("fuzzy, " + std::to_string(length) + " letters", found);
    }
    all.Print("fuzzy");
    for (size_t pick = 0; pick < patterns.size(); pick += 11)
        std::printf(R"({"pattern": "%s"})"
                    "\n",
                    patterns[pick].c_str());
}

class FilesBelow : public resolve::Sources {
public:
    explicit FilesBelow(std::string root) : root(std::move(root)) {}
    std::optional<std::string> Read(const std::string& path) const override
    {
        std::ifstream file(root + "/" + path, std::ios::binary);
        if (!file)
            return std::nullopt;
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

private:
    const std::string root;
};

void MeasureMentions(const Snapshot& snapshot, const std::string& root)
{
    const FilesBelow sources(root);
    tagging::TextParser parser(TaggingSettings());
    const resolve::Resolver resolver(snapshot, sources, parser);
    Lot lot(snapshot);
    std::string best;
    size_t uses = 0;
    constexpr size_t kWanted = 1000;
    const auto distance = [](size_t count) { return count > kWanted ? count - kWanted : kWanted - count; };
    for (const std::string& name : lot.Names()) {
        const size_t files = snapshot.FilesMentioning(name, {.results = 2000}).size();
        if (files < 100 || files > 1000)
            continue;
        const size_t count = resolver.ReferencesOf(name, {.results = 5000}).found.size();
        if (distance(count) < distance(uses)) {
            best = name;
            uses = count;
        }
        if (distance(uses) < 20)
            break;
    }
    Times times;
    for (int round = 0; round < 15; ++round)
        times.Measure([&] { resolver.ReferencesOf(best, {.results = 5000}); });
    times.Print("mentions", uses);
    std::printf(R"({"name": "%s"})"
                "\n",
                best.c_str());
}

// A watched index, as servers and editors have it.
class Watched {
public:
    Watched(const std::string& root, const std::string& cache) : index(OptionsFor(root, cache))
    {
        const auto updated = index.Update({}, cancel);
        if (!updated)
            Fail(updated.Failure().Message());
        thread = std::jthread([this] {
            const auto done = index.Watch(
                {}, [](const symbols::UpdateResult&) {}, cancel);
            if (!done)
                Fail(done.Failure().Message());
        });
    }
    ~Watched() { cancel.Cancel(); }

    SnapshotPointer Current() const { return index.Current(); }

    void WaitFor(const std::string& name) const
    {
        const auto start = Clock::now();
        while (Current()->ByName(name, {}).found.empty()) {
            if (MillisecondsSince(start) > 60'000)
                Fail("a change is not found within a minute");
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
    }

private:
    base::CancelToken cancel;
    symbols::Index index;
    std::jthread thread;
};

void MeasureChanges(const std::string& root, const std::string& cache, const std::string& path)
{
    const Watched watched(root, cache);
    Times times;
    const auto change = [&](int round) {
        const std::string name = "symbols_bench_change_" + std::to_string(round);
        std::ofstream(path, std::ios::app) << "int " << name << "(void) { return 0; }\n";
        watched.WaitFor(name);
    };
    for (int round = 0; round < 12; ++round)
        if (round < 2) // watches may still be being set
            change(round);
        else
            times.Measure([&] { change(round); });
    times.Print("change");
}

// In KB, of this process.
long MemoryFigure(const std::string& field)
{
    std::ifstream lines("/proc/self/smaps_rollup");
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(field + ":"))
            return std::atol(line.c_str() + field.size() + 1);
    return 0;
}

void MeasureIdle(const std::string& root, const std::string& cache)
{
    const Watched watched(root, cache);
    Lot lot(*watched.Current());
    for (const std::string& name : lot.Names())
        watched.Current()->ByName(name, {});
    for (size_t length = 2; length <= 12; ++length)
        watched.Current()->Fuzzy(lot.Pattern(length), {.results = 100});
    std::printf(R"({"what": "idle", "private": %ld, "mapped": %ld})"
                "\n",
                MemoryFigure("Private_Dirty"), MemoryFigure("Pss_File"));
}

// One generated file with 130 symbols, of which some names occur everywhere.
tagging::ParsedSource Generated(size_t file, size_t generation)
{
    tagging::ParsedSource source;
    source.contentHash = file * 31 + generation;
    for (unsigned line = 1; line <= 130; ++line) {
        tagging::Symbol symbol;
        const size_t number = (file * 130 + line) * 2654435761u % 1'000'000'007u;
        symbol.name =
            source.texts.Put(line % 13 == 0 ? "init_" + std::to_string(line)
                                            : "part" + std::to_string(number) + "_of_" + std::to_string(file % 977));
        symbol.scope = line % 3 == 0 ? source.texts.Put("record_" + std::to_string(file)) : "";
        symbol.signature = line % 3 == 1 ? std::string_view("(int a,char * b)") : "";
        symbol.type = "int";
        symbol.line = line;
        symbol.kind = line % 3 == 0 ? tagging::SymbolKind::Member : tagging::SymbolKind::Function;
        symbol.isDefinition = true;
        source.symbols.push_back(symbol);
        source.names.push_back(symbol.name);
    }
    source.includes.push_back({.name = source.texts.Put("part" + std::to_string(file / 2) + ".h"), .line = 1});
    return source;
}

void PutFiles(symbols::Store& store, size_t from, size_t to, size_t generation)
{
    const base::CancelToken never;
    auto writer = store.Write({.root = "/generated", .patterns = ""}, from == 0 && generation == 0, never);
    if (!writer)
        Fail(writer.Failure().Message());
    for (size_t file = from; file < to; ++file)
        (*writer)->Put("directory" + std::to_string(file / 100) + "/part" + std::to_string(file) + ".c",
                       {.size = generation, .modified = 1, .inode = file + 1}, Generated(file, generation));
    if (const auto done = (*writer)->Commit(); !done)
        Fail(done.Failure().Message());
}

void MeasureGrowth(const std::string& place, size_t files)
{
    symbols::Store store(place);
    Times make, changes;
    make.Measure([&] { PutFiles(store, 0, files, 0); });
    make.Print("make");
    for (size_t change = 1; change <= 40; ++change)
        changes.Measure([&] { PutFiles(store, files / 41 * change, files / 41 * change + 1, change); });
    changes.Print("change");
    const SnapshotPointer snapshot = store.Current();
    if (snapshot == nullptr)
        Fail("the index has no state after its commits");
    Lot lot(*snapshot);
    Words rare;
    std::ranges::copy_if(lot.Names(), std::back_inserter(rare),
                         [](const std::string& name) { return name.starts_with("part"); });
    Measure("by name", rare, [&](const std::string& name) { return snapshot->ByName(name, {}).found.size(); });
    Measure("by prefix", rare, [&](const std::string& name) {
        return snapshot->ByPrefix(name.substr(0, 6), {.results = 100}).found.size();
    });
    Words patterns;
    for (int pick = 0; pick < 40; ++pick)
        patterns.push_back(lot.Pattern(2 + lot.Below(10)));
    Measure("fuzzy", patterns,
            [&](const std::string& pattern) { return snapshot->Fuzzy(pattern, {.results = 100}).found.size(); });
    std::printf(R"({"what": "bytes", "bytes": %llu})"
                "\n",
                static_cast<unsigned long long>(snapshot->Totals().bytes));
}

void MeasureFirst(const symbols::Index& index, const std::string& name)
{
    Times times;
    size_t found = 0;
    times.Measure([&] { found = CurrentOf(index)->ByName(name, {}).found.size(); });
    times.Print("first", found);
}

bool Do(const std::string& way, const Words& words)
{
    if (way == "growth" && words.size() == 2) {
        MeasureGrowth(words[0], static_cast<size_t>(std::atol(words[1].c_str())));
        return true;
    }
    if (words.size() < 2)
        return false;
    if (words.size() == 3) {
        if (way == "change")
            MeasureChanges(words[0], words[1], words[2]);
        else if (way == "first")
            MeasureFirst(symbols::Index(OptionsFor(words[0], words[1])), words[2]);
        return way == "change" || way == "first";
    }
    symbols::Index index(OptionsFor(words[0], words[1]));
    if (way == "update")
        Update(index);
    else if (way == "queries")
        MeasureQueries(*CurrentOf(index));
    else if (way == "mentions")
        MeasureMentions(*CurrentOf(index), words[0]);
    else if (way == "idle")
        MeasureIdle(words[0], words[1]);
    else if (way == "names")
        for (const std::string& name : AllNames(*CurrentOf(index)))
            std::printf("%s\n", name.c_str());
    else if (way == "files")
        CurrentOf(index)->ForEachFile([](symbols::FileNumber, const symbols::File& file) {
            return std::printf("%.*s\n", static_cast<int>(file.path.size()), file.path.data()) > 0;
        });
    else
        return false;
    return true;
}

} // namespace

int main(int count, char** words)
{
    std::signal(SIGPIPE, SIG_IGN);
    if (count > 1 && Do(words[1], {words + 2, words + count}))
        return 0;
    std::fputs("usage: symbols_bench update|queries|mentions|idle|names|files ROOT CACHE, or first ROOT CACHE NAME,\n"
               "       or change ROOT CACHE FILE, or growth STORE FILES\n",
               stderr);
    return 2;
}
