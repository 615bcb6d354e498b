#include "resolve/OfferOrder.h"

#include "resolve/Blocks.h"
#include "resolve/Fitness.h"
#include "resolve/Nearby.h"
#include "resolve/Slot.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace resolve {

namespace {

// What counts, the weightiest first; smaller is better.
struct OfferKey {
    bool isNotLocal = false;
    bool isMisfit = false;
    bool isOtherCase = false; // than what is typed
    int phase = 0;
    std::uint64_t unused = 0; // less is more use
    bool isInner = false;     // meant for the library itself
    int group = 0;
    size_t order = 0;
    auto operator<=>(const OfferKey&) const = default;
};

class OfferKeys {
public:
    OfferKeys(const CompletionPlace& place, const std::vector<Offer>& offers, Front front)
        : place(place), offers(offers), front(front), isDefining(front == Front::OwnClass && IsAtDefinition()),
          slot(front == Front::Nothing
                   ? SlotBehind(place.GetTokens(), place.before, place.GetWorld().Text().IsCplusplus())
                   : Slot::Any)
    {
        const size_t next = place.GetTokens().FirstFrom(place.start);
        if (front == Front::Sign || front == Front::OwnClass)
            fitness.emplace(place.question, next, place.before);
        else
            nearby.emplace(place.GetTokens(), next, kNone);
        nextDeclared = fitness ? DeclaredBehind(fitness->LastUsed()) : kNone;
    }

    OfferKey Of(size_t index)
    {
        const Offer& offer = offers[index];
        const std::string_view name = offer.symbol.name;
        OfferKey key;
        key.isMisfit = !Fits(offer.symbol.kind, !offer.symbol.signature.empty(), slot);
        key.isOtherCase = !name.starts_with(place.typed);
        key.isInner = name.starts_with('_') && !place.typed.starts_with('_');
        key.group = offer.group;
        key.order = offer.order;
        if (fitness)
            WeighMember(key, index);
        else
            WeighName(key, offer);
        return key;
    }

private:
    void WeighName(OfferKey& key, const Offer& offer) const
    {
        key.unused = UINT64_MAX - nearby->Anywhere(offer.symbol.name);
        key.isNotLocal = offer.how != How::Local;
        key.phase = front == Front::Receiver && offer.how == How::Name ? 1 : 0;
    }

    void WeighMember(OfferKey& key, size_t index)
    {
        const Offer& offer = offers[index];
        key.phase = isDefining && !IsUndefined(offer.symbol) ? 1 : 0;
        if (isDefining && key.phase == 0)
            return; // in the order of the class
        const size_t depth = offer.how == How::Member ? static_cast<size_t>(offer.group) : 0;
        key.unused = UINT64_MAX - fitness->Of(offer.symbol, depth, index == nextDeclared);
    }

    // The offer that is declared behind that of the name.
    size_t DeclaredBehind(std::string_view name) const
    {
        const auto used =
            std::find_if(offers.begin(), offers.end(), [&](const Offer& each) { return each.symbol.name == name; });
        if (used == offers.end() || used + 1 == offers.end())
            return kNone;
        const bool isNext = used[1].symbol.file == used->symbol.file && used[1].symbol.scope == used->symbol.scope;
        return isNext ? static_cast<size_t>(used + 1 - offers.begin()) : kNone;
    }

    // "void Shape::", but neither "int f(Shape::" nor "class Round { Shape::".
    bool IsAtDefinition() const
    {
        const Tokens& tokens = place.GetTokens();
        const size_t around = tokens[place.before].parent;
        const bool isInParentheses = around != kNone && !tokens[around].Is('{');
        return !isInParentheses && !IsInFunction(tokens, place.before);
    }

    // "void Shape::": the methods come first that the class declares and the text does not define yet.
    bool IsUndefined(const Symbol& symbol) const
    {
        if (symbol.kind != SymbolKind::Prototype)
            return false;
        const std::vector<Symbol>& own = place.GetWorld().OwnSymbols();
        return std::none_of(own.begin(), own.end(), [&](const Symbol& each) {
            return each.kind == SymbolKind::Function && each.name == symbol.name &&
                   LeafOf(each.scope) == LeafOf(symbol.scope);
        });
    }

    const CompletionPlace& place;
    const std::vector<Offer>& offers;
    const Front front;
    const bool isDefining;
    const Slot slot;
    std::optional<Fitness> fitness; // behind a sign
    std::optional<Nearby> nearby;   // elsewhere
    size_t nextDeclared = kNone;
};

} // namespace

std::vector<Offer> BestOffers(const CompletionPlace& place, const std::vector<Offer>& offers, Front front)
{
    OfferKeys keys(place, offers, front);
    std::vector<std::pair<OfferKey, size_t>> order;
    for (size_t i = 0; i < offers.size(); ++i)
        order.emplace_back(keys.Of(i), i);
    const size_t count = std::min(order.size(), place.wanted < SIZE_MAX ? place.wanted + 1 : place.wanted);
    std::partial_sort(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(count), order.end());
    std::vector<Offer> best;
    for (size_t i = 0; i < count; ++i)
        best.push_back(offers[order[i].second]);
    return best;
}

} // namespace resolve
