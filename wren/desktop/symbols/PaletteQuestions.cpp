#include "wren/desktop/symbols/PaletteQuestions.h"

#include "symbols/store/Fuzzy.h"
#include "symbols/store/NameTraits.h"
#include "wren/symbols/NameColumn.h"
#include "wren/symbols/Outline.h"
#include "wren/symbols/ShownNames.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace wren {

namespace {

constexpr size_t kMost = 200;
constexpr size_t kBetweenChecks = 1024; // names, until the question may be given up

int KindOf(const symbols::FuzzyPattern& pattern, std::string_view name, const symbols::NameTraits& traits)
{
    return pattern.KindOf(name, pattern.ChancesOf(traits, symbols::kAnywhere));
}

std::string Where(std::string_view path, long line)
{
    return line == 0 ? std::string(path) : std::string(path) + ":" + std::to_string(line);
}

PaletteItem ItemFor(const tagging::Symbol& symbol)
{
    PaletteItem item;
    item.name = WithoutMadeNames(std::string(symbol.name));
    item.detail = WithoutMadeNames(std::string(symbol.scope));
    item.line = symbol.line;
    item.endLine = symbol.endLine;
    item.kind = symbol.kind;
    return item;
}

bool IsShownInOutline(tagging::SymbolKind kind)
{
    using enum tagging::SymbolKind;
    return kind != Local && kind != Parameter && kind != MacroParameter && kind != Label && kind != TemplateParameter &&
           kind != UsingName && kind != UsingNamespace;
}

void Flatten(const std::vector<OutlineNode>& nodes, int depth, std::vector<PaletteItem>& items)
{
    for (const OutlineNode& node : nodes) {
        if (!IsShownInOutline(node.symbol->kind))
            continue;
        PaletteItem item = ItemFor(*node.symbol);
        item.depth = depth;
        items.push_back(std::move(item));
        Flatten(node.children, depth + 1, items);
    }
}

} // namespace

void Narrow(std::vector<PaletteItem>& items, const std::string& letters)
{
    const symbols::FuzzyPattern pattern(letters);
    std::vector<std::pair<int, PaletteItem>> matching;
    for (PaletteItem& item : items)
        if (const int kind = pattern.KindOf(item.name); kind < symbols::kNoMatch) {
            item.positions = pattern.Positions(item.name);
            item.depth = 0;
            matching.emplace_back(kind, std::move(item));
        }
    std::ranges::stable_sort(matching, {}, [](const auto& each) { return each.first; });
    items.clear();
    for (auto& [kind, item] : matching)
        items.push_back(std::move(item));
}

PaletteAnswer SymbolsLike(const std::string& letters, const std::string& path, const Question& question)
{
    PaletteAnswer answer;
    const std::shared_ptr<Project> project = question.projects.For(path);
    project->Settle("");
    const symbols::SnapshotPointer snapshot = project->Workspace().Current();
    const symbols::FuzzyMatches matches = snapshot->Fuzzy(letters, {kMost, &question.cancel});
    answer.more = matches.more;
    for (const symbols::FuzzyMatch& match : matches.found) {
        const symbols::File file = snapshot->FileOf(match.symbol.file);
        PaletteItem item = ItemFor(match.symbol);
        if (item.name == match.symbol.name)
            item.positions = match.positions;
        item.path = project->Workspace().AbsolutePath(file);
        item.where = Where(file.path, item.line);
        answer.items.push_back(std::move(item));
    }
    return answer;
}

void FileNames::Read(const symbols::SnapshotPointer& snapshot)
{
    const symbols::FilesKey files = snapshot->Files();
    if (known == files)
        return;
    names.clear();
    snapshot->ForEachFile([this](symbols::FileNumber, const symbols::File& file) {
        if (file.isSystem)
            return true;
        const size_t leaf = file.path.rfind('/') + 1;
        const std::string_view path = file.path;
        names.push_back({std::string(path), leaf, symbols::TraitsOf(path), symbols::TraitsOf(path.substr(leaf))});
        return true;
    });
    known = files;
}

PaletteAnswer FileNames::Like(const std::string& letters, const std::string& path,
                              const std::vector<std::string>& recent, const Question& question)
{
    const std::shared_ptr<Project> project = question.projects.For(path);
    symbols::Workspace& workspace = project->Workspace();
    Read(workspace.Current());
    const symbols::FuzzyPattern pattern(letters);
    const bool byPath = letters.find('/') != std::string::npos;
    std::map<std::string, size_t, std::less<>> ages; // of recent files, by path in the index
    for (size_t age = 0; age < recent.size(); ++age)
        ages.emplace(workspace.PathInIndex(recent[age]), age);
    const std::string own = workspace.PathInIndex(path);
    const std::string_view beside = std::string_view(own).substr(0, own.rfind('/') + 1);
    // Only the path matches, how well, age, in another directory than the text, length.
    using Rank = std::tuple<bool, int, size_t, bool, size_t>;
    std::vector<std::pair<Rank, const Name*>> ranked;
    size_t looked = 0;
    for (const Name& name : names) {
        if (++looked % kBetweenChecks == 0 && question.cancel.IsCancelled())
            return {};
        if (!pattern.HasLetters(name.ofPath)) // most names: the rest of the loop is slow
            continue;
        const auto recentAge = ages.find(name.path);
        const size_t age = recentAge == ages.end() ? recent.size() : recentAge->second;
        if (letters.empty() && age == recent.size())
            continue;
        const std::string_view leaf = std::string_view(name.path).substr(name.leaf);
        const int ofLeaf = byPath ? symbols::kNoMatch : KindOf(pattern, leaf, name.ofLeaf);
        const int kind = ofLeaf < symbols::kNoMatch ? ofLeaf : KindOf(pattern, name.path, name.ofPath);
        if (kind < symbols::kNoMatch)
            ranked.push_back(
                {{ofLeaf == symbols::kNoMatch, kind, age, beside != DirectoryOf(name), name.path.size()}, &name});
    }
    const size_t shown = std::min(ranked.size(), kMost);
    std::ranges::partial_sort(ranked, ranked.begin() + static_cast<std::ptrdiff_t>(shown), {}, [](const auto& each) {
        return std::pair(each.first, std::string_view(each.second->path));
    });
    PaletteAnswer answer;
    answer.more = ranked.size() > shown;
    ranked.resize(shown);
    for (const auto& [rank, name] : ranked) {
        PaletteItem item;
        symbols::File file;
        file.path = name->path;
        item.path = workspace.AbsolutePath(file);
        const bool showsPath = std::get<0>(rank);
        item.name = showsPath ? name->path : name->path.substr(name->leaf);
        item.detail = showsPath ? "" : DirectoryOf(*name);
        item.positions = pattern.Positions(item.name);
        answer.items.push_back(std::move(item));
    }
    return answer;
}

PaletteAnswer SymbolsOfText(const std::string& letters, const AskedText& text, const Question& question)
{
    PaletteAnswer answer;
    const std::shared_ptr<Project> project = question.projects.For(text.path);
    symbols::Workspace& workspace = project->Workspace();
    const std::string path = workspace.PathInIndex(text.path);
    const resolve::ParsedTextPointer parsed = project->ParsedTexts().Get(path, *text.text, workspace.Parser());
    if (parsed->parsed == nullptr)
        return answer;
    Flatten(OutlineOf(parsed->parsed->symbols), 0, answer.items);
    if (!letters.empty())
        Narrow(answer.items, letters);
    for (PaletteItem& item : answer.items) {
        item.path = text.path;
        item.where = std::to_string(item.line);
    }
    return answer;
}

} // namespace wren
