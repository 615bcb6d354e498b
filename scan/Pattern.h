// The result of a scan for a pattern.
#pragma once

#include <string>

namespace scan {

// Its range in the text. For a selector only the difference of start and end counts, and the start may be negative.
struct Pattern {
    long start;
    long end;
    std::string text;
};

} // namespace scan
