#include "resolve/ScopeOffers.h"

#include "resolve/Distances.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace resolve {

namespace {

constexpr size_t kMostByPrefix = 1000;
constexpr size_t kEnough = 100; // names, without the rest of the project
constexpr int kMostInline = 20; // inline namespaces in one another

} // namespace

bool IsReachable(World& world, const Symbol& symbol)
{
    return !world.IsOtherLanguage(symbol) && world.Distance(symbol.file) < Distances::kUnrelated;
}

bool IsInSystemHeader(World& world, const Symbol& symbol)
{
    return symbol.file != world.TextFile() && world.Files().FileOf(symbol.file).isSystem;
}

void OfferWithEnumerators(const CompletionPlace& place, Offers& offers, const Symbol& symbol, How how, int group)
{
    offers.Add(symbol, how, group);
    if (symbol.kind != SymbolKind::Enum || symbol.isScopedEnum)
        return;
    for (const Symbol& each : place.GetWorld().InScope(Joined(symbol.scope, symbol.name)))
        if (each.kind == SymbolKind::Enumerator)
            offers.Add(each, how, group);
}

void OfferScope(const CompletionPlace& place, Offers& offers, const std::string& scope, int group)
{
    if (scope.empty())
        return;
    World& world = place.GetWorld();
    const std::vector<Symbol> found = world.InScope(scope);
    for (const Symbol& symbol : found)
        if (symbol.kind == SymbolKind::Namespace && symbol.isInline && group < kMostInline)
            OfferScope(place, offers, Joined(scope, symbol.name), group + 1);
    for (const Symbol& symbol : found) {
        const bool isUnrelated = world.Distance(symbol.file) >= Distances::kUnrelated;
        if (!world.IsFileLocalElsewhere(symbol))
            OfferWithEnumerators(place, offers, symbol, How::Scope, group + (isUnrelated ? 1 : 0));
    }
}

void OfferProject(const CompletionPlace& place, Offers& offers, const std::function<bool(const Symbol&)>& fits)
{
    if (place.typed.empty() || offers.All().size() > std::max(place.wanted, kEnough))
        return;
    World& world = place.GetWorld();
    std::vector<std::pair<int, Symbol>> found;
    for (const Symbol& symbol : world.Index().ByPrefix(place.typed, {kMostByPrefix, nullptr}).found)
        if (symbol.file != world.TextFile() && fits(symbol) && !world.IsFileLocalElsewhere(symbol) &&
            !world.IsOtherLanguage(symbol))
            found.emplace_back(world.Distance(symbol.file), symbol);
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [distance, symbol] : found) {
        if (distance < Distances::kUnrelated)
            offers.Add(symbol, How::Include, 3);
        else
            offers.Add(symbol, How::Name, distance < Distances::kSystem ? 4 : 5);
    }
}

} // namespace resolve
