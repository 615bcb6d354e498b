// The characters of a text.
#pragma once

#include <cstddef>
#include <string_view>

namespace vetch {

// The bytes of the code point that 'text' begins with, which is not empty; 1 for a byte that is part of no valid one.
size_t CodePointLength(std::string_view text);

// UTF-8 code points; a byte that is part of no valid one counts for itself, as the sign that is drawn in its place.
size_t CountCodePoints(std::string_view text);

} // namespace vetch
