// Counting the characters of a text.
#pragma once

#include <cstddef>
#include <string_view>

namespace vetch {

// UTF-8 code points; a byte that is part of no valid one counts for itself, as the sign that is drawn in its place.
size_t CountCodePoints(std::string_view text);

} // namespace vetch
