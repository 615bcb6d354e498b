// What sort of place a line's beginning ends at.
#pragma once

#include "wren/symbols/TextPlace.h"

#include <cstddef>
#include <string_view>

namespace wren {

struct LinePlace {
    // Include, Member, Qualified or Unqualified: a line cannot tell whether it is in a comment, or in a message.
    TextPlace::Sort sort = TextPlace::Sort::Unqualified;
    size_t wordSize = 0; // bytes before the end: the typed part of a name; in an #include what follows the last "/"
};

// By the look of it alone, which is cheap enough for every key.
LinePlace PlaceAtEnd(std::string_view line);

} // namespace wren
