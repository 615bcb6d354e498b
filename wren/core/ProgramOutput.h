// Standard output, kept for the program's own answers.
#pragma once

#include "base/Descriptor.h"

#include <string>

namespace wren {

// From its making on, descriptor 1 is standard error, so that nothing that the plug-in or a child process prints lands
// among the program's answers, which go to the original standard output. Children do not get that one. Make it once,
// before the bundle is loaded.
class ProgramOutput {
public:
    ProgramOutput();

    void DropTheRest(); // what is printed from now on goes nowhere, instead of to standard error

    bool Write(const std::string& text); // at once; false, with errno, when it could not be written
    bool IsTerminal() const;

    // The reader closed its end before the last answer, as head does. The program then tidies up and ends as SIGPIPE
    // would have ended it, without a message.
    static bool ReaderIsGone() { return gReaderIsGone; }

private:
    base::Descriptor output;
    static inline bool gReaderIsGone = false;
};

} // namespace wren
