#include "wren/desktop/symbols/FileNames.h"

#include "symbols/store/NameTraits.h"

#include <algorithm>
#include <map>

namespace wren {

namespace {

constexpr size_t kMost = 200;
constexpr size_t kBetweenChecks = 1024; // names, until the question may be given up

int KindOf(const symbols::FuzzyPattern& pattern, std::string_view name, const symbols::NameTraits& traits)
{
    return pattern.KindOf(name, pattern.ChancesOf(traits, symbols::kAnywhere));
}

} // namespace

// What a user wants to find, with paths as in the index.
struct FileNames::Wish {
    symbols::FuzzyPattern pattern;
    bool isPath = false;                                  // "dir/na"
    std::map<std::string, size_t, std::less<>> ages = {}; // of recent files
    size_t oldest = 0;                                    // of all others
    std::string beside = "";                              // the directory of the text
};

std::string_view FileNames::DirectoryOf(const Name& name)
{
    return std::string_view(name.first).substr(0, name.second.leaf);
}

std::string_view FileNames::LeafOf(const Name& name)
{
    return std::string_view(name.first).substr(name.second.leaf);
}

const FileNames::Name& FileNames::Examine(std::string_view path)
{
    if (const auto found = known.find(path); found != known.end())
        return *found;
    ++examined;
    const size_t leaf = path.rfind('/') + 1;
    const Traits traits{leaf, symbols::TraitsOf(path), symbols::TraitsOf(path.substr(leaf))};
    return *known.emplace(path, traits).first;
}

void FileNames::Read(const symbols::Snapshot& snapshot)
{
    const symbols::FilesKey now = snapshot.Files();
    if (files == now)
        return;
    if (known.size() > 2 * names.size())
        known.clear();
    names.clear();
    snapshot.ForEachOwnPath([this](std::string_view path) { names.push_back(&Examine(path)); });
    files = now;
}

std::optional<FileNames::Rank> FileNames::RankOf(const Name& name, const Wish& wish)
{
    const auto& [path, traits] = name;
    if (!wish.pattern.HasLetters(traits.ofPath)) // most names: what follows is slow
        return std::nullopt;
    const auto recent = wish.ages.find(path);
    const size_t age = recent == wish.ages.end() ? wish.oldest : recent->second;
    if (wish.pattern.IsEmpty() && age == wish.oldest)
        return std::nullopt;
    const int ofLeaf = wish.isPath ? symbols::kNoMatch : KindOf(wish.pattern, LeafOf(name), traits.ofLeaf);
    const int kind = ofLeaf < symbols::kNoMatch ? ofLeaf : KindOf(wish.pattern, path, traits.ofPath);
    if (kind >= symbols::kNoMatch)
        return std::nullopt;
    return Rank(ofLeaf == symbols::kNoMatch, kind, age, wish.beside != DirectoryOf(name), path.size());
}

PaletteAnswer FileNames::Like(const std::string& letters, const std::string& path,
                              const std::vector<std::string>& recent, const Question& question)
{
    symbols::Workspace& workspace = question.projects.For(path)->Workspace();
    Read(*workspace.Current());
    Wish wish{symbols::FuzzyPattern(letters), letters.find('/') != std::string::npos};
    wish.oldest = recent.size();
    for (size_t age = 0; age < recent.size(); ++age)
        wish.ages.emplace(workspace.PathInIndex(recent[age]), age);
    const std::string own = workspace.PathInIndex(path);
    wish.beside = own.substr(0, own.rfind('/') + 1);
    Ranked ranked;
    size_t looked = 0;
    for (const Name* const name : names) {
        if (++looked % kBetweenChecks == 0 && question.cancel.IsCancelled())
            return {};
        if (const std::optional<Rank> rank = RankOf(*name, wish))
            ranked.emplace_back(*rank, name);
    }
    PaletteAnswer answer;
    answer.more = ranked.size() > kMost;
    const auto shown = ranked.begin() + static_cast<std::ptrdiff_t>(std::min(ranked.size(), kMost));
    std::ranges::partial_sort(ranked, shown, {}, [](const auto& each) {
        return std::pair(each.first, std::string_view(each.second->first));
    });
    ranked.erase(shown, ranked.end());
    for (const auto& [rank, name] : ranked) {
        PaletteItem item;
        symbols::File file;
        file.path = name->first;
        item.path = workspace.AbsolutePath(file);
        const bool showsPath = std::get<0>(rank);
        item.name = showsPath ? name->first : std::string(LeafOf(*name));
        item.detail = showsPath ? "" : DirectoryOf(*name);
        item.positions = wish.pattern.Positions(item.name);
        answer.items.push_back(std::move(item));
    }
    return answer;
}

} // namespace wren
