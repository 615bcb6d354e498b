#include "wren/lsp/features/WorkspaceSymbols.h"

#include "symbols/store/Snapshot.h"
#include "wren/lsp/features/SymbolItems.h"
#include "wren/symbols/DeclarationRange.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace wren::lsp {

namespace {

constexpr size_t kMost = 200;

struct Found {
    symbols::FuzzyMatch match;
    std::string path; // absolute
};

// Texts by absolute path, read once.
class Files {
public:
    explicit Files(const RequestContext& context) : context(context) {}

    const Text* TextOf(const std::string& path)
    {
        const auto [place, isNew] = texts.try_emplace(path);
        if (isNew)
            place->second = Read(path);
        return place->second.get();
    }

private:
    TextPointer Read(const std::string& path) const
    {
        if (const Document* const open = OpenAt(*context.documents, path))
            return open->text;
        symbols::Workspace& workspace = context.projects.For(path)->Workspace();
        std::optional<std::string> content = workspace.Read(workspace.PathInIndex(path));
        return content ? std::make_shared<const Text>(*std::move(content)) : nullptr;
    }

    const RequestContext& context;
    std::map<std::string, TextPointer> texts;
};

// Of the name, which is looked for near its line when that has moved.
Range RangeIn(const Text* text, const tagging::Symbol& symbol, Encoding encoding)
{
    const unsigned fromNull = std::max(symbol.line, 1u) - 1;
    if (text == nullptr)
        return {{fromNull, 0}, {fromNull, 0}};
    const DeclarationRange range = RangeOfDeclaration(symbol, text->Source());
    return text->RangeOf(range.nameStart, range.nameEnd, encoding);
}

std::vector<Found> Search(const std::string& query, const RequestContext& context, bool inSystem,
                          std::vector<symbols::SnapshotPointer>& kept)
{
    std::vector<Found> found;
    for (const std::shared_ptr<Project>& project : context.projects.All()) {
        project->Settle("");
        const symbols::SnapshotPointer snapshot = project->Workspace().Current();
        for (symbols::FuzzyMatch& match : snapshot->Fuzzy(query, {kMost, &context.cancel, inSystem}).found) {
            const symbols::File file = snapshot->FileOf(match.symbol.file);
            std::string path = project->Workspace().AbsolutePath(file);
            if (file.isSystem || !project->IsIndexed() || context.projects.For(path) == project)
                found.push_back({std::move(match), std::move(path)}); // else a project within this one finds it
        }
        context.CheckCancelled();
        kept.push_back(snapshot);
    }
    return found;
}

// Symbols of one name and score stand together, definitions first. Two projects may both find a symbol of the system.
void Rank(std::vector<Found>& found)
{
    std::map<std::pair<int, std::string_view>, size_t> firsts;
    for (size_t number = 0; number < found.size(); ++number)
        firsts.try_emplace({-found[number].match.score, found[number].match.symbol.name}, number);
    std::ranges::stable_sort(found, {}, [&](const Found& each) {
        const symbols::FuzzyMatch& match = each.match;
        return std::tuple(-match.score, firsts.at({-match.score, match.symbol.name}), !match.symbol.isDefinition);
    });
    const auto isSame = [](const Found& left, const Found& right) {
        return left.path == right.path && left.match.symbol.line == right.match.symbol.line &&
               left.match.symbol.name == right.match.symbol.name;
    };
    found.erase(std::unique(found.begin(), found.end(), isSame), found.end());
    found.resize(std::min(found.size(), kMost));
}

} // namespace

void from_json(const Json& json, WorkspaceSymbolParams& params)
{
    params.query = Member<std::string>(json, "query");
}

Json WorkspaceSymbols(const WorkspaceSymbolParams& params, const RequestContext& context)
{
    Json items = Json::array();
    if (params.query.empty())
        return items;
    std::vector<symbols::SnapshotPointer> kept; // the symbols' texts belong to them
    std::vector<Found> found = Search(params.query, context, false, kept);
    if (found.empty())
        found = Search(params.query, context, true, kept);
    Rank(found);
    const bool filledLater = context.client.Lists("workspace/symbol/resolveSupport/properties", "location.range");
    Files files(context);
    for (const auto& [match, path] : found) {
        const symbols::Symbol& symbol = match.symbol;
        Json item = {{"name", ItemName(symbol)}, {"kind", SymbolKindOf(symbol)}};
        if (const std::string container = ContainerName(symbol); !container.empty())
            item["containerName"] = container;
        item["location"] = {{"uri", UriOf(*context.documents, path)}};
        if (filledLater)
            item["data"] = {{"line", symbol.line}, {"name", symbol.name}};
        else
            item["location"]["range"] = RangeIn(files.TextOf(path), symbol, context.client.Encoding());
        items.push_back(std::move(item));
    }
    return items;
}

Json ResolveWorkspaceSymbol(const Json& given, const RequestContext& context)
{
    Json item = given;
    const Json data = Member<Json>(item, "data");
    const std::string uri = Member<std::string>(Member<Json>(item, "location"), "uri");
    const std::string name = Member<std::string>(data, "name");
    tagging::Symbol symbol;
    symbol.name = name;
    symbol.line = Member<unsigned>(data, "line");
    Files files(context);
    item["location"]["range"] = RangeIn(files.TextOf(PathOfDocument(uri)), symbol, context.client.Encoding());
    return item;
}

} // namespace wren::lsp
