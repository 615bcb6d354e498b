#include "wren/desktop/symbols/PaletteQuestions.h"

#include "symbols/store/Fuzzy.h"
#include "wren/symbols/NameColumn.h"
#include "wren/symbols/Outline.h"
#include "wren/symbols/ShownNames.h"

#include <algorithm>
#include <utility>

namespace wren {

namespace {

constexpr size_t kMost = 200;

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
