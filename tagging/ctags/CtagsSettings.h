// How ctags is run, for all files of a run.
#pragma once

#include <string>

namespace tagging {

struct CtagsSettings {
    // What ctags writes: lines for ReadCtagsOutput(), or with all fields and kinds, for ReadSymbols().
    enum class Output { Tags, Symbols, SymbolsWithLocals };

    std::string program;     // its path
    std::string directory;   // working directory, base of the relative names it is given; without a trailing "/"
    std::string temporaries; // for its temporary files
    std::string language;    // forced for all files; "" to go by their names
    std::string ignored;     // the list of macros to ignore
    Output output = Output::Tags;
    bool prototypes = false; // for Output::Tags; symbols include them
    unsigned timeLimit = 20; // seconds per file
};

} // namespace tagging
