// What completion offers behind "::".
#pragma once

#include "resolve/CompletionPlace.h"
#include "resolve/Offers.h"

namespace resolve {

// What the class or the namespace in front of it has; what is outside of all when nothing stands there. True for a
// class of the project.
bool OfferQualified(const CompletionPlace& place, Offers& offers);

} // namespace resolve
