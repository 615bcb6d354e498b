// UTF-8 characters.
#pragma once

#include <cstddef>
#include <string_view>

namespace vetch {

// The length in bytes of the first code point of 'text', which is not empty; 1 for an invalid byte.
size_t CodePointLength(std::string_view text);

// UTF-8 code points; an invalid byte counts as one, as it is drawn as one sign.
size_t CountCodePoints(std::string_view text);

} // namespace vetch
