// What the palette asks while the user types.
#pragma once

#include "wren/desktop/symbols/PaletteItem.h"
#include "wren/desktop/symbols/PlaceQuestions.h"
#include "wren/desktop/symbols/SymbolEngine.h"

#include <string>
#include <vector>

namespace wren {

struct PaletteAnswer {
    std::vector<PaletteItem> items; // best first
    bool more = false;
};

// Of the project of 'path', an absolute one, and of the system's headers. Blocks; for a question's thread.
PaletteAnswer SymbolsLike(const std::string& letters, const std::string& path, const Question& question);

// Leaves what matches the letters, best first.
void Narrow(std::vector<PaletteItem>& items, const std::string& letters);

// In the order of the text when there are no letters. Blocks; for a question's thread.
PaletteAnswer SymbolsOfText(const std::string& letters, const AskedText& text, const Question& question);

} // namespace wren
