// The scopes around a line of a text.
#pragma once

#include "wren/desktop/symbols/PaletteItem.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace wren {

// Symbols are those of a text in its order, each with its depth; results are their numbers.

// What contains the line, from the outermost on: "namespace", "class", "function".
std::vector<size_t> ScopesAt(const std::vector<PaletteItem>& symbols, long line);

// The symbol's name as it reads in the scope around it: "Shape::Area" in a namespace, "Area" in the class. Null: in no
// scope.
std::string NameIn(const PaletteItem* outer, const PaletteItem& symbol);

// What stands directly in a symbol; nullopt: what stands in none.
std::vector<size_t> ContentsOf(const std::vector<PaletteItem>& symbols, std::optional<size_t> of);

// What stands beside a symbol, with itself.
std::vector<size_t> SiblingsOf(const std::vector<PaletteItem>& symbols, size_t of);

} // namespace wren
