// The command line of cplustags.
#pragma once

#include <string>
#include <vector>

namespace cplustags {

struct Options {
    static constexpr const char* kStandard = "-"; // as a name: standard input or output

    std::vector<std::string> files; // from the command line
    std::string list;               // -L: a file with names, "-" for standard input, "" for none
    std::string target = "tags";    // -f; "-" for standard output
    std::string ignored;            // -I, unchanged
    std::string language;           // --language-force; "" to go by the file names
    bool prototypes = false;        // --c-kinds=+p; also for C++
    bool append = false;
    bool followLinks = false; // write the file that a symbolic link at 'target' points to
    bool totals = false;

    // Environment variables, since the plug-in's command lines have no place for these.
    std::string ctags;       // CPLUSTAGS_CTAGS: the program to run, "" to search for one
    unsigned jobs = 1;       // CPLUSTAGS_JOBS: concurrent ctags processes; default: one per core
    unsigned timeLimit = 20; // CPLUSTAGS_TIME_LIMIT: seconds for ctags per file
};

// Reads the command line. If the program is done (--help, --version, wrong usage), '*status' is the exit status and the
// text has been printed; otherwise '*status' is -1. Unknown options are refused by name.
Options ReadOptions(int argc, const char* const* argv, int* status);

} // namespace cplustags
