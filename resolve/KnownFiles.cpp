#include "resolve/KnownFiles.h"

#include "resolve/Kinds.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <optional>
#include <set>

namespace resolve {

namespace {

using symbols::FileNumber;
using symbols::Snapshot;
using Includes = std::vector<symbols::Include>;

constexpr size_t kMostFiles = 3000; // a driver of a kernel includes some 1,500
constexpr int kMostSteps = 40;
constexpr size_t kMostWalks = 16;        // of an index that are kept
constexpr size_t kMostKnown = 2'000'000; // includes of an index that are kept
constexpr size_t kMostSymbols = 120'000; // of an index that are kept
constexpr size_t kMostNames = 4;         // texts for which symbols are kept by name
constexpr size_t kMostNamed = 50'000;    // symbols kept by name for a text
constexpr size_t kMostOfFile = 60'000;   // of a file that are kept

size_t HashOf(const Includes& includes)
{
    size_t hash = includes.size();
    for (const symbols::Include& include : includes)
        hash = hash * 1'000'003 + std::hash<std::string_view>()(include.name) * 2 + (include.isAngled ? 1 : 0);
    return hash;
}

// The best file of each include that is found.
std::vector<FileNumber> Resolved(IncludedFiles& files, std::string_view includer, const Includes& includes)
{
    std::vector<FileNumber> resolved;
    for (const symbols::Include& include : includes)
        if (const std::vector<FileNumber> found = files.Find(includer, include); !found.empty())
            resolved.push_back(found.front());
    return resolved;
}

struct FileIncludes {
    std::vector<FileNumber> included;
    std::vector<size_t> leaves; // hashes of the last parts of all include names: which other files could be meant
};
using FileIncludesPointer = std::shared_ptr<const FileIncludes>;

size_t LeafHash(std::string_view path)
{
    return std::hash<std::string_view>()(FileLeaf(path));
}

FileSymbolsPointer FileSymbolsOf(const Snapshot& snapshot, FileNumber file)
{
    auto made = std::make_shared<FileSymbols>();
    made->symbols = snapshot.OfFile(file).found;
    std::erase_if(made->symbols, [](const symbols::Symbol& symbol) { return IsMemberLike(symbol); });
    made->symbols.shrink_to_fit();
    for (const symbols::Symbol& symbol : made->symbols)
        made->firsts +=
            symbol.name.empty() ? '\0' : static_cast<char>(std::tolower(static_cast<unsigned char>(symbol.name[0])));
    return made;
}

} // namespace

std::string_view StemOf(std::string_view path)
{
    const std::string_view leaf = FileLeaf(path);
    return leaf.substr(0, leaf.find('.'));
}

// Of snapshots with the same index below the open texts. Any thread.
class KnownFiles::Graph {
public:
    explicit Graph(symbols::FilesKey key) : key(std::move(key)) {}

    const symbols::FilesKey& Key() const { return key; }

    IncludeWalkPointer From(const Snapshot& snapshot, const symbols::FilesKey& files, std::string_view path,
                            const Includes& includes)
    {
        const size_t hash = HashOf(includes);
        if (IncludeWalkPointer found = FindWalk(snapshot, files, path, hash))
            return found;
        const std::lock_guard one(walking); // a text that is read ahead is often asked about at the same time
        if (IncludeWalkPointer found = FindWalk(snapshot, files, path, hash))
            return found;
        auto made = std::make_shared<const IncludeWalk>(Walker(*this, snapshot, files).Walk(path, includes));
        const std::lock_guard lock(mutex);
        std::erase_if(walks, [&](const Kept& each) { return each.path == path; });
        if (walks.size() == kMostWalks)
            walks.erase(walks.begin());
        walks.push_back({std::string(path), hash, files, made});
        return made;
    }

    FileSymbolsPointer SymbolsOf(const Snapshot& snapshot, FileNumber file)
    {
        if (snapshot.FileOf(file).isOpen)
            return FileSymbolsOf(snapshot, file);
        {
            const std::lock_guard lock(mutex);
            if (const auto found = symbols.find(file); found != symbols.end())
                return found->second;
        }
        const FileSymbolsPointer made = FileSymbolsOf(snapshot, file);
        const std::lock_guard lock(mutex);
        if (made->symbols.size() > kMostOfFile)
            return made;
        if (symbolCount + made->symbols.size() > kMostSymbols) {
            symbols.clear();
            symbolCount = 0;
        }
        if (symbols.emplace(file, made).second)
            symbolCount += made->symbols.size();
        return made;
    }

    NamedSymbols WithName(const Snapshot& snapshot, const symbols::FilesKey& files, std::string_view path,
                          std::string_view name, symbols::Limits limits)
    {
        {
            const std::lock_guard lock(mutex);
            const auto& kept = NamesFor(files, path).symbols;
            if (const auto found = kept.find(name); found != kept.end())
                return found->second;
        }
        symbols::Symbols found = snapshot.ByName(name, limits);
        const std::optional<FileNumber> own = snapshot.FindFile(path);
        std::erase_if(found.found, [&](const symbols::Symbol& symbol) { return symbol.file == own; });
        auto made = std::make_shared<const std::vector<symbols::Symbol>>(std::move(found.found));
        if (limits.cancel != nullptr && limits.cancel->IsCancelled())
            return made;
        const std::lock_guard lock(mutex);
        Names& into = NamesFor(files, path);
        into.count += made->size() + 1;
        if (into.count > kMostNamed) {
            into.symbols.clear();
            into.count = made->size() + 1;
        }
        into.symbols.emplace(name, made);
        return made;
    }

private:
    struct Names { // that questions about a text needed
        std::string path;
        symbols::FilesKey files;
        std::map<std::string, NamedSymbols, std::less<>> symbols;
        size_t count = 0;
    };

    // With the lock. Another text's change can mean that a name is declared elsewhere.
    Names& NamesFor(const symbols::FilesKey& files, std::string_view path)
    {
        const auto found = std::ranges::find(names, path, &Names::path);
        if (found != names.end() && found->files.HasSameTexts(files, path)) {
            std::rotate(found, found + 1, names.end());
            return names.back();
        }
        if (found != names.end())
            names.erase(found);
        else if (names.size() == kMostNames)
            names.erase(names.begin());
        return names.emplace_back(Names{std::string(path), files, {}, 0});
    }

    struct Kept {
        std::string path;
        size_t hash; // of the includes that it begins with
        symbols::FilesKey files;
        IncludeWalkPointer walk;
    };

    class Walker {
    public:
        Walker(Graph& graph, const Snapshot& snapshot, const symbols::FilesKey& key)
            : graph(graph), snapshot(snapshot), files(snapshot)
        {
            for (const std::string& path : key.OpenTexts())
                open.insert(LeafHash(path));
        }

        IncludeWalk Walk(std::string_view path, const Includes& includes)
        {
            Add(Resolved(files, path, includes), 1);
            for (size_t i = 0; i < walk.order.size() && walk.order.size() < kMostFiles; ++i) {
                const FileNumber next = walk.order[i];
                const int step = walk.steps[next];
                if (step < kMostSteps)
                    Add(IncludedBy(next)->included, step + 1);
            }
            return std::move(walk);
        }

    private:
        // An open text may be what an include means from now on, or not any longer.
        bool MayBeOpen(const FileIncludes& file) const
        {
            return !open.empty() && std::ranges::any_of(file.leaves, [&](size_t leaf) { return open.contains(leaf); });
        }

        FileIncludesPointer IncludedBy(FileNumber number)
        {
            if (FileIncludesPointer known = graph.Known(number); known != nullptr && !MayBeOpen(*known))
                return known;
            const symbols::File file = snapshot.FileOf(number);
            const Includes includes = snapshot.IncludesOf(number);
            FileIncludes made{Resolved(files, file.path, includes), {}};
            for (const symbols::Include& include : includes)
                made.leaves.push_back(LeafHash(include.name));
            const bool mayBeOpen = MayBeOpen(made);
            auto shared = std::make_shared<const FileIncludes>(std::move(made));
            if (file.isOpen)
                walk.open.emplace_back(number, HashOf(includes));
            else if (!mayBeOpen)
                graph.Learn(number, shared);
            return shared;
        }

        void Add(const std::vector<FileNumber>& included, int step)
        {
            for (const FileNumber number : included) {
                if (!walk.steps.emplace(number, step).second)
                    continue;
                walk.order.push_back(number);
                if (const symbols::File file = snapshot.FileOf(number); !file.isSystem)
                    walk.stems.emplace(StemOf(file.path), step);
            }
        }

        Graph& graph;
        const Snapshot& snapshot;
        IncludedFiles files;
        std::set<size_t> open; // hashes of the last parts of their paths
        IncludeWalk walk;
    };

    IncludeWalkPointer FindWalk(const Snapshot& snapshot, const symbols::FilesKey& files, std::string_view path,
                                size_t hash)
    {
        IncludeWalkPointer walk;
        {
            const std::lock_guard lock(mutex);
            const auto found = std::ranges::find(walks, path, &Kept::path);
            if (found == walks.end() || found->hash != hash || !(found->files == files))
                return nullptr;
            std::rotate(found, found + 1, walks.end());
            walk = walks.back().walk;
        }
        const bool isSame = std::ranges::all_of(
            walk->open, [&](const auto& file) { return HashOf(snapshot.IncludesOf(file.first)) == file.second; });
        return isSame ? walk : nullptr;
    }

    FileIncludesPointer Known(FileNumber file)
    {
        const std::lock_guard lock(mutex);
        const auto found = known.find(file);
        return found == known.end() ? nullptr : found->second;
    }

    void Learn(FileNumber file, FileIncludesPointer what)
    {
        const std::lock_guard lock(mutex);
        knownCount += what->leaves.size() + 1;
        if (knownCount > kMostKnown) {
            known.clear();
            knownCount = what->leaves.size() + 1;
        }
        known.emplace(file, std::move(what));
    }

    const symbols::FilesKey key;
    std::mutex walking;      // held by whoever follows includes; taken before the next one
    std::mutex mutex;        // of the rest
    std::vector<Kept> walks; // the latest at the end
    std::unordered_map<FileNumber, FileIncludesPointer> known;
    size_t knownCount = 0;
    std::unordered_map<FileNumber, FileSymbolsPointer> symbols;
    size_t symbolCount = 0;
    std::vector<Names> names; // the latest at the end
};

std::shared_ptr<KnownFiles::Graph> KnownFiles::GraphOf(const symbols::FilesKey& key)
{
    const std::lock_guard lock(mutex);
    const auto found = std::ranges::find_if(graphs, [&](const auto& graph) { return graph->Key().HasSameIndex(key); });
    if (found != graphs.end()) {
        std::rotate(found, found + 1, graphs.end());
        return graphs.back();
    }
    if (graphs.size() == kKept)
        graphs.erase(graphs.begin());
    graphs.push_back(std::make_shared<Graph>(key));
    return graphs.back();
}

IncludeWalkPointer KnownFiles::From(const Snapshot& snapshot, std::string_view path, const Includes& includes)
{
    const symbols::FilesKey key = snapshot.Files();
    return GraphOf(key)->From(snapshot, key, path, includes);
}

FileSymbolsPointer KnownFiles::SymbolsOf(const Snapshot& snapshot, FileNumber file)
{
    return GraphOf(snapshot.Files())->SymbolsOf(snapshot, file);
}

NamedSymbols KnownFiles::WithName(const Snapshot& snapshot, std::string_view path, std::string_view name,
                                  symbols::Limits limits)
{
    const symbols::FilesKey key = snapshot.Files();
    return GraphOf(key)->WithName(snapshot, key, path, name, limits);
}

} // namespace resolve
