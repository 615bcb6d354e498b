// What a scan for a pattern yields.
#pragma once

#include <string>

namespace scan {

// Where it stands in the text; of a selector only the difference of start and end means anything, and the start may
// be negative.
struct Pattern {
    long start;
    long end;
    std::string text;
};

} // namespace scan
