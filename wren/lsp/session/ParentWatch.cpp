#include "wren/lsp/session/ParentWatch.h"

#include "base/Descriptor.h"

#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace wren::lsp {

ParentWatch::ParentWatch(pid_t process, base::CancelToken& gone) : gone(gone), thread([this, process] { Run(process); })
{
}

ParentWatch::~ParentWatch()
{
    ends.Cancel();
    thread.join();
}

// A descriptor of the process also tells of one that has ended and that nobody has waited for. Without such a
// descriptor (an older kernel), the process is looked at from time to time.
void ParentWatch::Run(pid_t process)
{
    constexpr int kPause = 5000; // ms
    const base::Descriptor open(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
    while (!ends.IsCancelled()) {
        pollfd wait[2] = {{ends.Descriptor(), POLLIN, 0}, {open.Number(), POLLIN, 0}};
        const int ready = ::poll(wait, 2, kPause);
        const bool hasEnded = ready > 0 && wait[1].revents != 0;
        if (hasEnded || (ready == 0 && ::kill(process, 0) != 0 && errno == ESRCH)) {
            gone.Cancel();
            return;
        }
    }
}

} // namespace wren::lsp
