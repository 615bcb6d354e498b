#include "cplustags/StandardOutput.h"

#include "cplustags/Interrupt.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>

namespace cplustags {

namespace {

constexpr size_t kFlushedAt = 64 * 1024;

} // namespace

bool StandardOutput::Write(std::string_view text)
{
    buffer += text;
    return buffer.size() < kFlushedAt || Flush();
}

bool StandardOutput::Flush()
{
    for (size_t written = 0; written < buffer.size() && !failed;) {
        const ssize_t count = ::write(STDOUT_FILENO, buffer.data() + written, buffer.size() - written);
        if (count >= 0)
            written += static_cast<size_t>(count);
        else
            failed = errno != EINTR || Interruption().IsCancelled();
        if (failed && errno == EPIPE)
            Interrupt(SIGPIPE);
    }
    buffer.clear();
    return !failed;
}

} // namespace cplustags
