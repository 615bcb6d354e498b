#include "wren/core/ProgramOutput.h"

#include "base/NewFile.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace wren {

ProgramOutput::ProgramOutput()
{
    std::fflush(stdout);
    output = base::Descriptor(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
}

void ProgramOutput::DropTheRest()
{
    std::fflush(stdout);
    const base::Descriptor nowhere(::open("/dev/null", O_WRONLY | O_CLOEXEC));
    if (nowhere.IsOpen())
        ::dup2(nowhere.Number(), STDOUT_FILENO);
}

bool ProgramOutput::Write(const std::string& text)
{
    const base::Result<void> written = base::WriteAll(output.Number(), text);
    if (!written) {
        gReaderIsGone = written.Failure().number == EPIPE;
        errno = written.Failure().number;
    }
    return static_cast<bool>(written);
}

bool ProgramOutput::IsTerminal() const
{
    return ::isatty(output.Number()) == 1;
}

} // namespace wren
