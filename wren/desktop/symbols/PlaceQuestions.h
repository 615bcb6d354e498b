// Questions about the name at a place of a text.
#pragma once

#include "wren/desktop/symbols/AskedText.h"
#include "wren/desktop/symbols/FoundPlace.h"
#include "wren/desktop/symbols/SymbolEngine.h"

#include <functional>

namespace wren {

enum class Wanted { Definition, Declaration, Implementations };

// These block; they are for a question's thread.
FoundPlaces PlacesOf(Wanted wanted, const AskedText& asked, const Question& question);

// Hands over the uses of the name file by file, the text's own first. Returns whether there are more.
bool ReferencesTo(const AskedText& asked, const Question& question,
                  const std::function<void(std::vector<FoundPlace> part)>& part);

} // namespace wren
