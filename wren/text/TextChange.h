// What became of a text, as one stretch that was replaced.
#pragma once

#include <string_view>

namespace wren {

struct TextChange { // bytes
    long offset = 0;
    long removed = 0;
    long inserted = 0; // in the place of those

    bool operator==(const TextChange&) const = default;
};

// Between two texts; of whole lines, each ended by "\n". Nothing is removed or inserted when the two are the same.
TextChange ChangeBetween(std::string_view before, std::string_view after);

// Where a place is after the change.
long MovedPlace(long place, const TextChange& change);

} // namespace wren
