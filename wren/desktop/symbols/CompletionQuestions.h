// What the list of completions asks.
#pragma once

#include "wren/desktop/symbols/AskedText.h"
#include "wren/desktop/symbols/PaletteItem.h"
#include "wren/desktop/symbols/SymbolEngine.h"
#include "wren/symbols/TextPlace.h"

#include <vector>

namespace wren {

struct CompletionAnswer {
    TextPlace where;
    std::vector<PaletteItem> items; // nearest first; a directory's name ends in "/"
    bool more = false;              // letters that are typed now may lead to others
};

// Blocks; for a question's thread.
CompletionAnswer CompletionsAt(const AskedText& asked, const Question& question);

// Locals and parameters.
bool IsLocal(const PaletteItem& item);

// Leaves what the typed letters lead to, best first. Of locals ('localsOnly') only those that begin with the letters,
// since a list that comes by itself while other words are typed must not guess.
std::vector<PaletteItem> Fitting(const std::vector<PaletteItem>& items, const std::string& typed, bool localsOnly);

} // namespace wren
