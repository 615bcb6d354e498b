// cplustags: makes tags files that symbol lookup reads.
#include "cplustags/Interrupt.h"
#include "cplustags/MakeTags.h"
#include "cplustags/Options.h"
#include "cplustags/Progress.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

// Where one of the standard descriptors is closed, the next file opened would get its number, and what is meant for it.
void OpenStandardDescriptors()
{
    for (int number = ::open("/dev/null", O_RDWR); number >= 0; number = ::open("/dev/null", O_RDWR))
        if (number > STDERR_FILENO) {
            ::close(number);
            return;
        }
}

} // namespace

int main(int argc, char** argv)
{
    OpenStandardDescriptors();
    std::signal(SIGPIPE, SIG_IGN); // a write that fails says so itself
    std::signal(SIGXFSZ, SIG_IGN); // also one for which a file would grow beyond what is allowed
    int status;
    const cplustags::Options options = cplustags::ReadOptions(argc, argv, &status);
    if (status >= 0)
        return status;
    cplustags::CatchInterrupts();
    {
        cplustags::Progress progress(STDERR_FILENO);
        status = cplustags::MakeTags(options, progress);
    }
    if (cplustags::Interrupted() && status != 0)
        cplustags::DieOfInterrupt();
    return status;
}
