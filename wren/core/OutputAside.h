// Keeps standard output for the program's own words.
#pragma once

#include <string>

namespace wren {

// From its making on, descriptor 1 is standard error, so that nothing that the plug-in or a child process prints lands
// among the program's answers, which go to the original standard output. Children do not get that one. Make it once,
// before the bundle is loaded.
class OutputAside {
public:
    OutputAside();

    void DropTheRest(); // what is printed from now on goes nowhere, instead of to standard error

    bool Write(const std::string& text); // at once; false, with errno, when it could not be written
    bool IsTerminal() const;

    // Whether whoever read the program's words has gone before their end, as head does. The program is then to tidy up,
    // and to end as SIGPIPE would have ended it, without a word.
    static bool ReaderIsGone() { return gReaderIsGone; }

private:
    int output;
    static inline bool gReaderIsGone = false;
};

} // namespace wren
