// The order in which completion lists what it offers.
#pragma once

#include "resolve/CompletionPlace.h"
#include "resolve/Offers.h"

#include <vector>

namespace resolve {

// What stands before the name that is typed.
enum class Front {
    Nothing,  // the name stands alone
    Sign,     // ".", "->" or "::"
    OwnClass, // a class of the project and "::"
    Receiver, // of a message
};

// The best ones: as many as are wanted, and one more if there are more.
std::vector<Offer> BestOffers(const CompletionPlace& place, const std::vector<Offer>& offers, Front front);

} // namespace resolve
