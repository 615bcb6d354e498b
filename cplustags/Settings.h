// What is the same for all files of a run.
#pragma once

#include <set>
#include <string>

namespace cplustags {

struct Settings {
    std::string ctags; // the program's path
    std::string
        directory; // of the tags file: where ctags runs, and what file fields are relative to; without "/" at its end
    std::string temporaries;             // where ctags may put its temporary files
    std::string language;                // that all files are to be taken for; "" to go by their names
    std::string ignored;                 // the list of macros to ignore, for ctags
    std::set<std::string> ignoredMacros; // the same, for ReadObjectiveC()
    bool prototypes = false;
    unsigned jobs = 1;
    unsigned timeLimit = 20; // seconds a file
};

} // namespace cplustags
