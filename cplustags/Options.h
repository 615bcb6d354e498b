// The command line of cplustags.
#pragma once

#include <string>
#include <vector>

namespace cplustags {

struct Options {
    static constexpr const char* kStandard = "-"; // as a name: standard input or output

    std::vector<std::string> files; // named on the command line
    std::string list;               // of -L: a file with names, "-" for standard input, "" for none
    std::string target = "tags";    // of -f; "-" for standard output
    std::string ignored;            // of -I, as it was written
    std::string language;           // of --language-force; "" to go by the file names
    bool prototypes = false;        // --c-kinds=+p; of C++ too
    bool append = false;
    bool followLinks = false; // write the file that a symbolic link at 'target' points to
    bool totals = false;

    // From the environment, since the command lines of the plug-in leave no room for them.
    std::string ctags;       // CPLUSTAGS_CTAGS: the program to run, "" to look for one
    unsigned jobs = 1;       // CPLUSTAGS_JOBS: ctags processes at a time; default: one a core
    unsigned timeLimit = 20; // CPLUSTAGS_TIME_LIMIT: seconds that ctags may take for a file
};

// Reads the command line. When there is nothing more to do (--help, --version, wrong usage) '*status' is the exit
// status and the text has been printed; otherwise it is -1. An option that is not known is refused by name.
Options ReadOptions(int argc, const char* const* argv, int* status);

} // namespace cplustags
