// A run of "wren index".
#pragma once

#include <string>

namespace wren {

struct IndexWords {
    std::string directory; // "" for the current one
    bool system = false;   // the headers of the system instead
    bool status = false;
    bool watch = false;
    bool remove = false;
    std::string exportTo;   // a file; "" for none
    std::string importFrom; // a file; "" for none
};

// Returns the exit status. Ends the process when a signal interrupts the work.
int RunIndex(const IndexWords& words);

} // namespace wren
