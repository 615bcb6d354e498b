// The difference between two texts, as one replaced range.
#pragma once

#include <string_view>

namespace wren {

struct TextChange { // bytes
    long offset = 0;
    long removed = 0;
    long inserted = 0; // in their place

    bool operator==(const TextChange&) const = default;
};

// The change in whole lines, each ended by "\n". Nothing is removed or inserted when the texts are equal.
TextChange ChangeBetween(std::string_view before, std::string_view after);

// The offset of a place after the change.
long MovedPlace(long place, const TextChange& change);

} // namespace wren
