// What a scan for a pattern yields.
#pragma once

#include <string>

namespace scan {

struct Pattern {
    long
        start; // in the document; of a selector only the difference of both means anything, and the start may be negative
    long end;
    std::string text;
};

} // namespace scan
