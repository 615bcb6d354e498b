#include "resolve/VisibleOffers.h"

#include "resolve/Blocks.h"
#include "resolve/IncludedFiles.h"
#include "resolve/ScopeOffers.h"

#include <algorithm>
#include <cctype>
#include <unordered_set>

namespace resolve {

namespace {

constexpr size_t kMostUsed = 40; // names of the text that are looked up, the nearest ones

} // namespace

VisibleOffers::VisibleOffers(const CompletionPlace& place, Offers& offers)
    : place(place), offers(offers), world(place.GetWorld()), tokens(place.GetTokens())
{
}

void VisibleOffers::OfferAll()
{
    OfferLocals();
    OfferScopes();
    OfferOwn();
    OfferUsed();
    OfferIncluded();
    OfferProject(place, offers, [this](const Symbol& symbol) { return IsVisible(symbol); });
}

void VisibleOffers::OfferGlobal()
{
    scopes = {{0, ""}};
    for (const Symbol& symbol : world.OwnSymbols())
        if (IsVisible(symbol) && symbol.scope.empty())
            offers.Add(symbol, How::Scope, 0);
    OfferUsed();
    OfferIncluded();
}

void VisibleOffers::OfferLocals()
{
    // The walk outwards begins at a token of the place's block.
    const size_t next = tokens.FirstFrom(place.start);
    if (tokens.Count() == 0)
        return;
    ForEachLocal(tokens, next < tokens.Count() ? next : tokens.Count() - 1, [this](const LocalName& local) {
        if (tokens[local.name].offset >= place.start)
            return true;
        Symbol symbol;
        symbol.name = tokens[local.name].text;
        symbol.line = tokens[local.name].line;
        symbol.kind = local.kind;
        symbol.file = world.TextFile();
        offers.Add(symbol, How::Local, 0);
        return true;
    });
}

void VisibleOffers::OfferScopes()
{
    const unsigned line = tokens[place.before == kNone ? 0 : place.before].line;
    for (const auto& [scope, level] : place.question.GetNames().VisibleScopes(line))
        scopes.emplace_back(level, scope);
    std::sort(scopes.begin(), scopes.end());
    for (const auto& [level, scope] : scopes)
        OfferEnclosing(scope, level);
}

void VisibleOffers::OfferEnclosing(const std::string& scope, int level)
{
    if (scope.empty())
        return;
    const std::vector<Class> of = place.question.GetClasses().Find(scope, "", world.TextFile());
    if (of.empty())
        return OfferScope(place, offers, scope, 2);
    for (const Symbol& symbol : world.InScope(of.front().scope))
        offers.Add(symbol, How::Member, level % 10 == 0 ? 1 : 2);
}

void VisibleOffers::OfferOwn()
{
    for (const Symbol& symbol : world.OwnSymbols())
        if (symbol.scope.empty() || world.VisibleScope(symbol).empty())
            offers.Add(symbol, How::Scope, 2);
}

// What the text uses already, wherever it is declared: there may be too many names with the same beginning.
void VisibleOffers::OfferUsed()
{
    std::unordered_set<std::string_view> seen;
    const size_t next = std::min(tokens.FirstFrom(place.start), tokens.Count());
    for (size_t step = 0; step < tokens.Count() && seen.size() < kMostUsed; ++step) {
        const size_t i = step < next ? next - 1 - step : step;
        const Token& token = tokens[i];
        const bool isUse = token.IsWord() && token.offset != place.start && offers.IsTyped(token.text) &&
                           !tokens[i - 1].Is('.') && tokens[i - 1].text != "->" && !IsKeyword(token.text);
        if (isUse && !offers.Has(token.text) && seen.insert(token.text).second)
            OfferNamed(token.text);
    }
}

void VisibleOffers::OfferNamed(std::string_view name)
{
    const Symbol* other = nullptr;
    for (const Symbol& symbol : world.Named(name)) {
        if (!IsVisible(symbol))
            continue;
        if (IsReachable(world, symbol))
            return offers.Add(symbol, How::Include, 3);
        const bool isOut = world.IsOtherLanguage(symbol) || world.IsFileLocalElsewhere(symbol);
        if (other == nullptr && !isOut)
            other = &symbol;
    }
    if (other != nullptr)
        offers.Add(*other, How::Name, IsInSystemHeader(world, *other) ? 5 : 4);
}

bool VisibleOffers::IsVisible(const Symbol& symbol)
{
    if (IsMemberLike(symbol))
        return false;
    if (!world.Text().IsCplusplus())
        return true;
    const std::string scope = world.VisibleScope(symbol);
    return std::any_of(scopes.begin(), scopes.end(), [&](const auto& each) { return each.second == scope; });
}

void VisibleOffers::OfferIncluded()
{
    const std::string_view typed = place.typed;
    const int first = typed.empty() ? 0 : std::tolower(static_cast<unsigned char>(typed[0]));
    size_t files = 0;
    for (const FileNumber file : world.Files().Included()) {
        if (++files > kMostListedFiles || !world.Goes())
            return;
        const FileSymbolsPointer all = world.SymbolsOf(file);
        for (size_t i = 0; i < all->symbols.size(); ++i)
            if ((typed.empty() || all->firsts[i] == first) && offers.IsTyped(all->symbols[i].name) &&
                IsVisible(all->symbols[i]))
                offers.Add(all->symbols[i], How::Include, 3);
    }
}

} // namespace resolve
