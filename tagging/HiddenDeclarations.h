// Declarations that ctags reports under the name of an attribute's macro.
#pragma once

#include "tagging/ParsedSource.h"

#include <optional>

namespace tagging {

// "Table table_ GUARDED_BY(mutex_);" is a function GUARDED_BY of type "Table table_" to ctags. Returns the variable or
// member table_ then. The result borrows the texts of 'symbol', and is marked as unknown to ctags.
std::optional<Symbol> DeclarationBefore(const Symbol& symbol);

} // namespace tagging
