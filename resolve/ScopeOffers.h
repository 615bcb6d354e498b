// What completion offers of scopes and of the whole project.
#pragma once

#include "resolve/CompletionPlace.h"
#include "resolve/Offers.h"

#include <functional>
#include <string>

namespace resolve {

// The symbol; of an unscoped enum also the enumerators, which are names of the scope around it.
void OfferWithEnumerators(const CompletionPlace& place, Offers& offers, const Symbol& symbol, How how, int group);

// What a namespace declares, also in its inline ones.
void OfferScope(const CompletionPlace& place, Offers& offers, const std::string& scope, int group);

// What fits of the rest of the project, by the letters that are typed. Nothing when there is enough without it.
void OfferProject(const CompletionPlace& place, Offers& offers, const std::function<bool(const Symbol&)>& fits);

// By what the text includes, and in its language.
bool IsReachable(World& world, const Symbol& symbol);
bool IsInSystemHeader(World& world, const Symbol& symbol);

} // namespace resolve
