#include "wren/cli/CommandSupport.h"

#include "wren/core/ProgramOutput.h"
#include "wren/core/TerminalText.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace wren {

void Complain(const std::string& text)
{
    std::fprintf(stderr, "wren: %s\n", ShownOn(STDERR_FILENO, text).c_str());
}

bool WriteOrComplain(ProgramOutput& output, const std::string& text, const char* what)
{
    return WriteAsIsOrComplain(output, output.IsTerminal() ? ForTerminal(text) : text, what);
}

bool WriteAsIsOrComplain(ProgramOutput& output, const std::string& text, const char* what)
{
    if (output.Write(text))
        return true;
    if (!ProgramOutput::ReaderIsGone())
        Complain(std::string("cannot write ") + what + ": " + std::strerror(errno));
    return false;
}

} // namespace wren
