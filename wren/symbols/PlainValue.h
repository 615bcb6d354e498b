// The values of constants that a reader could work out.
#pragma once

#include <optional>
#include <string_view>

namespace wren {

// Of an expression of whole numbers, "(1 << 4) | 0x3"; nullopt for anything else, and when it does not fit.
std::optional<long long> PlainValue(std::string_view expression);

} // namespace wren
