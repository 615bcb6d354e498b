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
// What stands in for it can be neither read nor written, so that using it still fails.
void OccupyStandardDescriptors()
{
    int number;
    do
        number = ::open("/dev/null", O_PATH);
    while (number >= 0 && number <= STDERR_FILENO);
    if (number >= 0)
        ::close(number);
}

} // namespace

int main(int argc, char** argv)
{
    OccupyStandardDescriptors();
    std::signal(SIGPIPE, SIG_IGN); // a write that fails says so itself
    std::signal(SIGXFSZ, SIG_IGN); // also one for which a file would grow beyond what is allowed
    int status;
    const cplustags::Options options = cplustags::ReadOptions(argc, argv, &status);
    if (status >= 0)
        return status;
    cplustags::CatchInterrupts();
    {
        cplustags::Progress progress(STDERR_FILENO);
        status = cplustags::MakeTags(options, progress, cplustags::Interruption());
    }
    if (cplustags::Interruption().IsCancelled() && status != 0)
        cplustags::DieOfInterrupt();
    return status;
}
