// The search pattern for a named symbol.
#pragma once

#include <optional>
#include <string>

namespace wren {

// The same pattern as for a lookup of the symbol in a source: the name, qualified or not, without a leading "std::", or
// the selector ("putBook:onLevel:"). nullopt for other texts, such as operators and destructors, and for more than
// 1,024 bytes. Those are found only by their exact text, and without a choice of kinds.
std::optional<std::string> PatternForSymbol(const std::string& symbol);

} // namespace wren
