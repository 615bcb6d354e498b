// Where a name stands that was known to stand in a line of a text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wren {

class Document;

// Edits move names away from the lines that tags files know, so the line counts first, then the nearest one that has
// the name as a whole word. Lines count from 1. Absent when no line near enough has it.
std::optional<long> OffsetOfNameNear(const Document& document, long line, std::string_view name);

// The name at the caret, as far as its line has it.
std::string NameAt(const Document& document, long offset);

} // namespace wren
