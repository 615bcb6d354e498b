#include "resolve/QualifiedOffers.h"

#include "resolve/Nearby.h"
#include "resolve/Operand.h"
#include "resolve/ScopeOffers.h"
#include "resolve/VisibleOffers.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <vector>

namespace resolve {

namespace {

// The names in the text that stand behind the same qualifier.
std::vector<size_t> UsesBehindQualifier(const CompletionPlace& place, const Offers& offers)
{
    const Tokens& tokens = place.GetTokens();
    const std::string_view qualifier = ReceiverName(tokens, place.before);
    std::vector<size_t> uses;
    std::unordered_set<std::string_view> seen;
    for (size_t i = 2; i < tokens.Count(); ++i)
        if (tokens[i].IsWord() && i - 1 != place.before && tokens[i - 1].IsMark("::") &&
            tokens[i - 2].text == qualifier && offers.IsTyped(tokens[i].text) && seen.insert(tokens[i].text).second)
            uses.push_back(i);
    return uses;
}

void OfferReachable(World& world, Offers& offers, std::string_view name)
{
    for (const Symbol& symbol : world.Named(name))
        if (!IsMemberLike(symbol) && IsReachable(world, symbol))
            return offers.Add(symbol, How::Name, 0);
}

void OfferInScope(World& world, Offers& offers, std::string_view name, const std::string& scope)
{
    for (const Symbol& symbol : world.Named(name))
        if (world.VisibleScope(symbol) == scope && !world.IsFileLocalElsewhere(symbol))
            return offers.Add(symbol, How::Scope, 0);
}

// Namespaces of that name that the text does not include: a macro may open the one that is meant.
bool IsUnreachableNamespace(World& world, const std::vector<Symbol>& types)
{
    return !types.empty() && types.front().kind == SymbolKind::Namespace &&
           std::none_of(types.begin(), types.end(), [&](const Symbol& each) { return IsReachable(world, each); });
}

std::string ScopeOf(const Type& type, const std::vector<Symbol>& types)
{
    if (!types.empty() && types.front().kind == SymbolKind::NamespaceAlias && !types.front().target.empty())
        return std::string(types.front().target);
    if (!types.empty() && types.front().kind == SymbolKind::Namespace)
        return Joined(types.front().scope, types.front().name);
    return type.name;
}

// A large namespace has more names than can be listed: what the text uses of it is there in any case.
void OfferNamespace(const CompletionPlace& place, Offers& offers, const Type& type, const std::vector<Symbol>& types)
{
    World& world = place.GetWorld();
    const std::string scope = ScopeOf(type, types);
    const std::vector<size_t> uses = UsesBehindQualifier(place, offers);
    if (IsUnreachableNamespace(world, types))
        for (const size_t use : uses)
            OfferReachable(world, offers, place.GetTokens()[use].text);
    for (const size_t use : uses)
        if (!offers.Has(place.GetTokens()[use].text))
            OfferInScope(world, offers, place.GetTokens()[use].text, scope);
    OfferScope(place, offers, scope, 0);
}

// What stands in front of the "::"; empty for a plain "::name".
std::string_view QualifierOf(const CompletionPlace& place)
{
    const size_t begin = BeginOfOperand(place.GetTokens(), place.before);
    return begin >= place.before ? std::string_view() : place.GetTokens().Text(begin, place.before - 1);
}

} // namespace

bool OfferQualified(const CompletionPlace& place, Offers& offers)
{
    World& world = place.GetWorld();
    Classes& classes = place.question.GetClasses();
    const std::string_view qualifier = QualifierOf(place);
    const unsigned line = place.GetTokens()[place.before].line;
    const Type type = ParseType(qualifier, place.question.GetNames().ScopesAt(line).front(), world.TextFile());
    const std::vector<Symbol> types = classes.FindTypes(type.name, type.scope, type.file);
    const bool isNamespace = !types.empty() && types.front().kind == SymbolKind::Namespace;
    const std::vector<Class> of = isNamespace ? std::vector<Class>() : classes.Find(type);
    if (!of.empty()) {
        for (const ClassMember& member : classes.Members(of.front()))
            OfferWithEnumerators(place, offers, member.symbol, How::Member, static_cast<int>(member.depth));
        return IsClassKind(of.front().symbol.kind) && !IsInSystemHeader(world, of.front().symbol);
    }
    if (qualifier.empty())
        VisibleOffers(place, offers).OfferGlobal();
    else
        OfferNamespace(place, offers, type, types);
    return false;
}

} // namespace resolve
