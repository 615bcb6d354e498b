// cplustags: makes tags files that symbol lookup reads.
#include "cplustags/Interrupt.h"
#include "cplustags/MakeTags.h"
#include "cplustags/Options.h"
#include "cplustags/Progress.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

// If a standard descriptor is closed, the next opened file would get its number and its data. The substitute can be
// neither read nor written, so using it still fails.
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
    std::signal(SIGPIPE, SIG_IGN); // writes then fail with EPIPE
    std::signal(SIGXFSZ, SIG_IGN); // the same for a file beyond the size limit
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
