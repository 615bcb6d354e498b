#include "resolve/MemberOffers.h"

#include "resolve/ScopeOffers.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace resolve {

namespace {

bool IsBehindReceiver(const Symbol& symbol)
{
    return IsMemberLike(symbol) || (IsCallable(symbol.kind) && !symbol.scope.empty());
}

// The receiver is unknown: what is used behind receivers in this text, and members by their names.
void OfferAnyMembers(const CompletionPlace& place, Offers& offers)
{
    const Tokens& tokens = place.GetTokens();
    for (size_t i = 0; i < tokens.Count(); ++i) {
        const bool isUse = tokens[i].IsWord() && (tokens[i - 1].Is('.') || tokens[i - 1].text == "->");
        if (!isUse || !offers.IsTyped(tokens[i].text))
            continue;
        for (const Symbol& symbol : std::vector<Symbol>(place.GetWorld().Named(tokens[i].text)))
            if (IsBehindReceiver(symbol))
                offers.Add(symbol, How::Name, 0);
    }
    OfferProject(place, offers, IsBehindReceiver);
}

// The bracket of the message whose receiver ends before the place, or kNone.
size_t BracketOfMessage(const CompletionPlace& place)
{
    const Tokens& tokens = place.GetTokens();
    const size_t open = tokens[place.before].parent;
    const size_t at = open != kNone ? open : place.before;
    if (!place.GetWorld().Text().IsObjectiveC() || !tokens[at].Is('[') || place.before == at)
        return kNone;
    if (tokens[at - 1].IsWord() && !IsStatementWord(tokens[at - 1].text))
        return kNone; // "array[i"
    const Token& last = tokens[place.before];
    return last.IsWord() || last.Is(']') || last.Is(')') ? at : kNone;
}

void OfferMethodNamed(const CompletionPlace& place, Offers& offers, const std::string& selector)
{
    for (const Symbol& symbol : place.GetWorld().Named(selector))
        if (IsMethod(symbol.kind))
            return offers.Add(symbol, How::Name, 4);
}

// The receiver may be more than its type says, or unknown: methods that the text names.
void OfferUsedMethods(const CompletionPlace& place, Offers& offers)
{
    const Tokens& tokens = place.GetTokens();
    std::unordered_set<std::string> seen;
    for (size_t i = 0; i < tokens.Count(); ++i) {
        const bool isPart = tokens[i].IsWord() && tokens[i].offset != place.start && offers.IsTyped(tokens[i].text) &&
                            (tokens[i + 1].Is(':') || tokens[i + 1].Is(']'));
        if (!isPart)
            continue;
        const std::string selector = std::string(tokens[i].text) + (tokens[i + 1].Is(':') ? ":" : "");
        if (!offers.Has(selector) && seen.insert(selector).second)
            OfferMethodNamed(place, offers, selector);
    }
}

} // namespace

void OfferMembers(const CompletionPlace& place, Offers& offers, const Type& type)
{
    Classes& classes = place.question.GetClasses();
    const std::vector<Class> of = classes.Find(type);
    if (!of.empty())
        for (const ClassMember& member : classes.Members(of.front()))
            if (member.symbol.name != LeafOf(member.owner) && !IsTypeKind(member.symbol.kind) &&
                member.symbol.kind != SymbolKind::Enumerator)
                offers.Add(member.symbol, How::Member, member.symbol.isVirtual ? 0 : static_cast<int>(member.depth));
    if (offers.All().empty())
        OfferAnyMembers(place, offers);
}

bool OfferMethods(const CompletionPlace& place, Offers& offers)
{
    const size_t bracket = BracketOfMessage(place);
    if (bracket == kNone)
        return false;
    const Type type = place.question.GetExpressions().TypeOf(bracket + 1, place.before + 1);
    Classes& classes = place.question.GetClasses();
    const std::vector<Class> of = classes.Find(type);
    if (!of.empty())
        for (const ClassMember& member : classes.Members(of.front()))
            if (IsMethod(member.symbol.kind) || member.symbol.kind == SymbolKind::Property)
                offers.Add(member.symbol, How::Member, static_cast<int>(member.depth));
    OfferUsedMethods(place, offers);
    if (offers.All().empty())
        OfferProject(place, offers, [](const Symbol& symbol) { return IsMethod(symbol.kind); });
    return true;
}

} // namespace resolve
