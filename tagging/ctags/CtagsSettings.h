// How ctags is run, for all files of a run.
#pragma once

#include <string>

namespace tagging {

struct CtagsSettings {
    std::string program;     // its path
    std::string directory;   // working directory, base of the relative names it is given; without a trailing "/"
    std::string temporaries; // for its temporary files
    std::string language;    // forced for all files; "" to go by their names
    std::string ignored;     // the list of macros to ignore
    bool prototypes = false;
    unsigned timeLimit = 20; // seconds per file
};

} // namespace tagging
