// Names that fit a place, nearest first.
#include "resolve/MemberOffers.h"
#include "resolve/OfferOrder.h"
#include "resolve/QualifiedOffers.h"
#include "resolve/Resolver.h"
#include "resolve/VisibleOffers.h"

#include <algorithm>

namespace resolve {

namespace {

// "{.na": the member of what is initialized.
bool IsDesignator(const CompletionPlace& place)
{
    const Tokens& tokens = place.GetTokens();
    const size_t open = tokens[place.before].parent;
    return tokens[place.before].Is('.') && open != kNone && tokens[open].Is('{') &&
           (tokens[place.before - 1].Is('{') || tokens[place.before - 1].Is(','));
}

Front OfferNames(const CompletionPlace& place, Offers& offers)
{
    if (place.before != kNone) {
        const Token& sign = place.GetTokens()[place.before];
        if (IsDesignator(place)) {
            OfferMembers(place, offers, place.question.GetExpressions().Initialized(sign.parent));
            return Front::Sign;
        }
        if (sign.Is('.') || sign.text == "->") {
            OfferMembers(place, offers, place.question.ReceiverBefore(place.before));
            return Front::Sign;
        }
        if (sign.IsMark("::"))
            return OfferQualified(place, offers) ? Front::OwnClass : Front::Sign;
        if (OfferMethods(place, offers))
            return Front::Receiver;
    }
    VisibleOffers(place, offers).OfferAll();
    return Front::Nothing;
}

} // namespace

Candidates Resolver::Complete(const Place& place, symbols::Limits limits) const
{
    Candidates candidates;
    candidates.text = TextOf(place);
    Question question(snapshot, sources, candidates.text, place.offset, limits, Known());
    const Tokens& tokens = question.GetTokens();
    const size_t word = question.Word();
    candidates.start = std::min(place.offset, place.text.size());
    if (word != kNone)
        candidates.start = tokens[word].offset;
    const std::string_view typed =
        std::string_view(candidates.text->text).substr(candidates.start, place.offset - candidates.start);
    const size_t next = tokens.FirstFrom(candidates.start);
    const Token& last = tokens[next - 1];
    const bool isInLiteral = next > 0 && last.kind == Token::kLiteral && last.End() > candidates.start;
    if (isInLiteral)
        return candidates;
    const CompletionPlace typedAt{question, candidates.start, next == 0 ? kNone : next - 1, typed, limits.results};
    Offers offers(typed);
    const Front front = OfferNames(typedAt, offers);
    for (const Offer& offer : BestOffers(typedAt, offers.All(), front)) {
        if (candidates.found.size() == limits.results) {
            candidates.more = true;
            break;
        }
        candidates.found.push_back(
            {offer.symbol, std::string(question.GetWorld().PathOf(offer.symbol.file)), offer.how});
    }
    return candidates;
}

void Resolver::ReadAhead(const Place& place) const
{
    World world(snapshot, sources, TextOf(place), {}, Known());
    size_t files = 0;
    for (const FileNumber file : world.Files().Included())
        if (++files <= kMostListedFiles)
            world.SymbolsOf(file);
}

} // namespace resolve
