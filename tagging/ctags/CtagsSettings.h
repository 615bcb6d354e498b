// How ctags is run: the same for all files of a run.
#pragma once

#include <string>

namespace tagging {

struct CtagsSettings {
    std::string program;   // its path
    std::string directory; // where it runs, and what the names that it is given are relative to; without "/" at its end
    std::string temporaries; // where it may put its temporary files
    std::string language;    // that all files are to be taken for; "" to go by their names
    std::string ignored;     // the list of macros to ignore
    bool prototypes = false;
    unsigned timeLimit = 20; // seconds a file
};

} // namespace tagging
