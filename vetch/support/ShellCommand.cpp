#include "vetch/support/ShellCommand.h"

#include <atomic>
#include <cstdlib>

namespace vetch {

namespace {

std::atomic<ShellRunner> gRunner = nullptr;

} // namespace

int RunShellCommand(const char* command, const ShellRequest& request)
{
    const ShellRunner runner = gRunner;
    return runner != nullptr ? runner(command, request) : std::system(command);
}

ShellRunner SetShellRunner(ShellRunner runner)
{
    return gRunner.exchange(runner);
}

} // namespace vetch
