// What completion offers of names that need no receiver and no qualifier.
#pragma once

#include "resolve/CompletionPlace.h"
#include "resolve/Offers.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace resolve {

constexpr size_t kMostListedFiles = 200; // of those that the text includes, the nearest ones

// Used once, on one thread.
class VisibleOffers {
public:
    // Both must outlive this.
    VisibleOffers(const CompletionPlace& place, Offers& offers);

    // Locals, then the scopes around the place from the inside out, the text, its includes, and the project.
    void OfferAll();

    // "::na": what the text and its includes declare outside of all scopes.
    void OfferGlobal();

private:
    using Scopes = std::vector<std::pair<int, std::string>>; // and how far out they are

    void OfferLocals();
    void OfferScopes();
    void OfferEnclosing(const std::string& scope, int level);
    void OfferOwn();
    void OfferUsed();
    void OfferNamed(std::string_view name);
    void OfferIncluded();
    bool IsVisible(const Symbol& symbol);

    const CompletionPlace& place;
    Offers& offers;
    World& world;
    const Tokens& tokens;
    Scopes scopes;
};

} // namespace resolve
