#include "wren/cli/Interruption.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace wren {

namespace {

constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};
constexpr int kCannotRun = -1; // system()'s answer when there is no process

// What the handler reads and writes: no locks there.
std::atomic<int> gSignal = 0;
std::atomic<pid_t> gGroup = 0; // the process group of the command that runs; 0 for none
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<pid_t>::is_always_lock_free);

std::array<struct sigaction, kSignals.size()> gFormerActions;

void HandleSignal(int signal)
{
    const int savedErrno = errno;
    int none = 0;
    const bool isFirst = gSignal.compare_exchange_strong(none, signal);
    if (const pid_t group = gGroup; group != 0)
        ::kill(-group, isFirst ? signal : SIGKILL);
    errno = savedErrno;
}

// Answers the process's number, which is its group's as well, or 0.
pid_t StartShell(const char* command)
{
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&files, STDERR_FILENO, STDOUT_FILENO);
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    const char* words[] = {"sh", "-c", command, nullptr};
    pid_t process = 0;
    if (::posix_spawn(&process, "/bin/sh", &files, &attributes, const_cast<char**>(words), environ) != 0)
        process = 0;
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&files);
    return process;
}

// The process's number stays taken, and with it its group's, so that a signal cannot reach strangers.
void WaitUntilEnded(pid_t process)
{
    siginfo_t ignored;
    while (::waitid(P_PID, static_cast<id_t>(process), &ignored, WEXITED | WNOWAIT) < 0 && errno == EINTR)
        continue;
}

int Reap(pid_t process)
{
    int status = kCannotRun;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR)
        continue;
    return status;
}

// A shell may die before the programs that it started, and they have something to tidy up.
void ReapGroup(pid_t group)
{
    int ignored;
    while (::waitpid(-group, &ignored, 0) > 0 || errno == EINTR)
        continue;
}

} // namespace

Interruption::Interruption()
{
    gSignal = 0;
    ::prctl(PR_SET_CHILD_SUBREAPER, 1); // the group of a dead shell can be waited for
    struct sigaction action = {};
    action.sa_handler = HandleSignal;
    action.sa_flags = SA_RESTART;
    sigfillset(&action.sa_mask);
    for (size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], nullptr, &gFormerActions[i]);
        if (gFormerActions[i].sa_handler != SIG_IGN)
            ::sigaction(kSignals[i], &action, nullptr);
    }
}

Interruption::~Interruption()
{
    for (size_t i = 0; i < kSignals.size(); ++i)
        ::sigaction(kSignals[i], &gFormerActions[i], nullptr);
    ::prctl(PR_SET_CHILD_SUBREAPER, 0);
}

int Interruption::Signal() const
{
    return gSignal;
}

int Interruption::Run(const char* command)
{
    const pid_t shell = StartShell(command);
    if (shell == 0)
        return kCannotRun;
    gGroup = shell;
    if (gSignal != 0) // it came before there was anybody to pass it on to
        ::kill(-shell, gSignal);
    WaitUntilEnded(shell);
    if (gSignal == 0)
        gGroup = 0;
    const int status = Reap(shell);
    if (gSignal != 0)
        ReapGroup(shell);
    gGroup = 0;
    return status;
}

void DieBySignal(int signal)
{
    ::signal(signal, SIG_DFL);
    ::raise(signal);
    std::_Exit(128 + signal); // whoever started the program had it blocked
}

} // namespace wren
