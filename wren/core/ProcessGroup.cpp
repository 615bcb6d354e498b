#include "wren/core/ProcessGroup.h"

#include "base/Process.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <sys/wait.h>
#include <thread>

namespace wren {

namespace {

using Clock = std::chrono::steady_clock;

base::Result<base::Process> StartShell(const std::string& command, const ProcessGroup::Streams& streams)
{
    base::Program shell;
    shell.path = "/bin/sh";
    shell.words = {"sh", "-c", command};
    shell.descriptors = {base::Program::kNoInput, streams.output, streams.output};
    shell.descriptors.insert(shell.descriptors.end(), streams.more.begin(), streams.more.end());
    return base::Process::Start(shell);
}

} // namespace

base::Result<int> ProcessGroup::Run(const std::string& command, const Streams& streams)
{
    if (Stopped() != 0)
        return base::Error{"the command was stopped before it started", ECANCELED};
    base::Result<base::Process> started = StartShell(command, streams);
    if (!started)
        return started.Failure();
    const pid_t shell = started->Number();
    SetGroup(shell);
    const bool isKilled = started->WaitUntilEnded();
    const bool isLeft = SetGroup(0) || isKilled;
    // A stop may have come after the shell's end, or another process killed only the shell. The shell's children are
    // still there, and could write during the next run.
    if (isLeft)
        ::kill(-shell, SIGTERM);
    const int status = started->Wait();
    if (isLeft)
        WaitForGroup(shell);
    return status;
}

// A shell may die before its children, which have to clean up. Grandchildren can only be polled. Kills the processes
// that have not ended in time, or before a further stop.
void ProcessGroup::WaitForGroup(pid_t left) const
{
    constexpr std::chrono::milliseconds kLookAgain(2);
    constexpr std::chrono::seconds kAfterKill(5);
    Clock::time_point kill = Clock::now() + patience;
    bool killed = false;
    while (true) {
        int ignored;
        while (::waitpid(-left, &ignored, WNOHANG) > 0)
            continue;
        if (::kill(-left, 0) != 0 || (killed && Clock::now() >= kill + kAfterKill))
            return;
        if (!killed && (Clock::now() >= kill || IsToBeKilled())) {
            ::kill(-left, SIGKILL);
            kill = Clock::now();
            killed = true;
        }
        std::this_thread::sleep_for(kLookAgain);
    }
}

void ProcessGroup::Stop(int signal)
{
    const std::lock_guard guard(mutex);
    last = stopped == 0 ? signal : SIGKILL;
    if (group != 0)
        ::kill(-group, last);
    if (stopped == 0)
        stopped = signal;
}

int ProcessGroup::Stopped() const
{
    const std::lock_guard guard(mutex);
    return stopped;
}

bool ProcessGroup::IsToBeKilled() const
{
    const std::lock_guard guard(mutex);
    return last == SIGKILL;
}

// Returns whether the command was stopped.
bool ProcessGroup::SetGroup(pid_t newGroup)
{
    const std::lock_guard guard(mutex);
    group = newGroup;
    if (group != 0 && stopped != 0) // the stop came before the group was known
        ::kill(-group, last);
    return stopped != 0;
}

} // namespace wren
