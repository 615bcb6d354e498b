// What the tags files are searched for when a symbol is named.
#pragma once

#include <optional>
#include <string>

namespace wren {

// The pattern that a lookup takes from a source in which the symbol stands: the name, qualified or not, without a
// leading "std::", or the selector ("putBook:onLevel:"). Nothing for a text that is neither, and for one of more than
// 1,024 bytes: an operator or a destructor, say, is found only as it is written, and without a choice of kinds.
std::optional<std::string> PatternForSymbol(const std::string& symbol);

} // namespace wren
