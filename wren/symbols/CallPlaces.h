// Where functions are called.
#pragma once

#include "symbols/store/Snapshot.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace wren {

// The offsets of names in [start, end) that may be called: before "(", and words of messages before ":" and "]". At
// most 'limit'.
std::vector<size_t> CallPlaces(std::string_view text, size_t start, size_t end, size_t limit);

// The innermost function around a line, of a file's symbols.
std::optional<symbols::Symbol> FunctionAround(const symbols::Symbols& symbols, unsigned line);

// That, or else the variable whose initialiser the line belongs to.
std::optional<symbols::Symbol> CallerAround(const symbols::Symbols& symbols, unsigned line);

} // namespace wren
