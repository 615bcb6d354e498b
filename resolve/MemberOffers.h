// What completion offers behind ".", "->" and a message's receiver.
#pragma once

#include "resolve/CompletionPlace.h"
#include "resolve/Offers.h"

namespace resolve {

// The members of a type, or of any when nothing is known about it.
void OfferMembers(const CompletionPlace& place, Offers& offers, const Type& type);

// "[receiver na": methods and properties. False when no message stands there.
bool OfferMethods(const CompletionPlace& place, Offers& offers);

} // namespace resolve
