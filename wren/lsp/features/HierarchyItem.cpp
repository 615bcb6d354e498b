#include "wren/lsp/features/HierarchyItem.h"

#include "wren/lsp/features/SymbolItems.h"
#include "wren/lsp/session/SymbolPlace.h"

#include <algorithm>

namespace wren::lsp {

namespace {

constexpr size_t kMostMeanings = 100;

} // namespace

void from_json(const Json& json, HierarchyParams& params)
{
    const Json item = Member<Json>(json, "item");
    params.uri = Member<std::string>(item, "uri");
    params.range = Member<Range>(item, "range");
    params.selectionRange = Member<Range>(item, "selectionRange");
}

std::optional<Json> HierarchyItem(const symbols::Symbol& symbol, const std::string& path, const Subject& subject)
{
    const std::optional<SymbolPlace> place = PlaceOf(symbol, path, subject);
    if (!place)
        return std::nullopt;
    Json item = {{"name", ItemName(symbol)},
                 {"kind", SymbolKindOf(symbol)},
                 {"uri", place->uri},
                 {"range", place->extent},
                 {"selectionRange", place->name}};
    const std::string container = ContainerName(symbol);
    item["detail"] = container.empty() ? path : container;
    return item;
}

Json FileItem(const std::string& path, const Subject& subject)
{
    constexpr int kFile = 1; // the protocol's number
    return {{"name", path.substr(path.rfind('/') + 1)},
            {"kind", kFile},
            {"uri", subject.UriOf(path)},
            {"range", Range()},
            {"selectionRange", Range()},
            {"detail", path}};
}

Json HierarchyItemsAt(Position position, bool (*isWanted)(tagging::SymbolKind kind), const Subject& subject)
{
    if (!subject.IsSource())
        return nullptr;
    std::vector<resolve::Answer> found =
        subject.Resolver().Meanings(subject.PlaceAt(position), subject.LimitsOf(kMostMeanings)).found;
    std::erase_if(found, [&](const resolve::Answer& each) { return !each.isMeant || !isWanted(each.symbol.kind); });
    if (std::ranges::any_of(found, [](const resolve::Answer& each) { return each.symbol.isDefinition; }))
        std::erase_if(found, [](const resolve::Answer& each) { return !each.symbol.isDefinition; });
    Json items = Json::array();
    for (const resolve::Answer& each : found)
        if (std::optional<Json> item = HierarchyItem(each.symbol, each.path, subject))
            items.push_back(*std::move(item));
    return items.empty() ? Json() : items;
}

} // namespace wren::lsp
