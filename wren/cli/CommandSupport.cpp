#include "wren/cli/CommandSupport.h"

#include "base/ExitStatus.h"
#include "wren/core/ProgramOutput.h"
#include "wren/core/TerminalText.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <unistd.h>

namespace wren {

void Complain(const std::string& text)
{
    std::fprintf(stderr, "wren: %s\n", ShownOn(STDERR_FILENO, text).c_str());
}

int Unusable(const base::Error& error)
{
    Complain(error.Message());
    return base::exit_status::kUnusable;
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

bool WantsColour(const ProgramOutput& output)
{
    const char* terminal = std::getenv("TERM");
    return output.IsTerminal() && std::getenv("NO_COLOR") == nullptr && terminal != nullptr &&
           std::string_view(terminal) != "dumb";
}

std::string ShownPlace(const std::string& path, long line, std::optional<long> column, bool colour)
{
    const std::string numbers = std::to_string(line) + (column ? ":" + std::to_string(*column) : "");
    return colour ? "\x1b[35m" + path + "\x1b[0m:\x1b[32m" + numbers + "\x1b[0m" : path + ":" + numbers;
}

} // namespace wren
