// Standard output, kept for the program's own answers.
#pragma once

#include "base/Descriptor.h"

#include <string>

namespace wren {

// From construction, descriptor 1 is standard error, so that output of the plug-in or a child process does not mix with
// the program's answers. Those go to the original standard output, which children do not inherit. Make it once, before
// the bundle is loaded.
class ProgramOutput {
public:
    ProgramOutput();

    void DropTheRest(); // later prints are discarded, instead of going to standard error

    bool Write(const std::string& text); // unbuffered; false, with errno, on failure
    bool IsTerminal() const;

    // The reader closed its end before the last answer, as head does. The program then cleans up and ends silently, as
    // by SIGPIPE.
    static bool ReaderIsGone() { return gReaderIsGone; }

private:
    base::Descriptor output;
    static inline bool gReaderIsGone = false;
};

} // namespace wren
