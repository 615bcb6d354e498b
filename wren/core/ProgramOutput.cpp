#include "wren/core/ProgramOutput.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace wren {

ProgramOutput::ProgramOutput()
{
    std::fflush(stdout);
    output = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
}

void ProgramOutput::DropTheRest()
{
    std::fflush(stdout);
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0)
        return;
    ::dup2(nowhere, STDOUT_FILENO);
    ::close(nowhere);
}

bool ProgramOutput::Write(const std::string& text)
{
    for (size_t done = 0; done < text.size();) {
        const ssize_t count = ::write(output, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR) {
            gReaderIsGone = errno == EPIPE;
            return false;
        }
        done += count < 0 ? 0 : static_cast<size_t>(count);
    }
    return true;
}

bool ProgramOutput::IsTerminal() const
{
    return ::isatty(output) == 1;
}

} // namespace wren
