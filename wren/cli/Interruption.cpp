#include "wren/cli/Interruption.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace wren {

namespace {

constexpr int kCannotRun = -1; // system()'s answer when there is no process

sigset_t SignalsNotIgnored()
{
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action;
        ::sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_IGN)
            sigaddset(&set, signal);
    }
    return set;
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

Interruption::Interruption() : watched(SignalsNotIgnored())
{
    ::prctl(PR_SET_CHILD_SUBREAPER, 1); // the group of a dead shell can be waited for
    // Commands are no foreground jobs of the terminal, and some terminals would stop them for showing their progress.
    formerTerminalOutput = ::signal(SIGTTOU, SIG_IGN);
    // What find has to say of a directory may reach nobody any more. If it died of that, the files that it had not come
    // to would be missing in the tags.
    formerLostReader = ::signal(SIGPIPE, SIG_IGN);
    ::pthread_sigmask(SIG_BLOCK, &watched, &formerMask);
    signals = ::signalfd(-1, &watched, SFD_CLOEXEC);
    end = ::eventfd(0, EFD_CLOEXEC);
    watcher = std::thread([this] { Watch(); });
}

Interruption::~Interruption()
{
    ::eventfd_write(end, 1);
    watcher.join();
    ::close(end);
    ::close(signals);
    ::pthread_sigmask(SIG_SETMASK, &formerMask, nullptr);
    ::signal(SIGPIPE, formerLostReader);
    ::signal(SIGTTOU, formerTerminalOutput);
    ::prctl(PR_SET_CHILD_SUBREAPER, 0);
}

void Interruption::Hold()
{
    const std::lock_guard guard(mutex);
    held = true;
}

void Interruption::Release()
{
    const std::lock_guard guard(mutex);
    held = false;
}

int Interruption::Signal() const
{
    const std::lock_guard guard(mutex);
    return first;
}

int Interruption::Run(const char* command)
{
    const pid_t shell = StartShell(command);
    if (shell == 0)
        return kCannotRun;
    SetGroup(shell);
    WaitUntilEnded(shell);
    if (!IsInterrupted())
        SetGroup(0);
    const int status = Reap(shell);
    if (IsInterrupted())
        ReapGroup(shell);
    SetGroup(0);
    return status;
}

void Interruption::Watch()
{
    pollfd sources[] = {{signals, POLLIN, 0}, {end, POLLIN, 0}};
    while (::poll(sources, 2, -1) > 0 || errno == EINTR) {
        signalfd_siginfo signal;
        if ((sources[0].revents & POLLIN) != 0 && ::read(signals, &signal, sizeof signal) == sizeof signal)
            Take(static_cast<int>(signal.ssi_signo));
        else if ((sources[1].revents & POLLIN) != 0)
            return;
    }
}

void Interruption::Take(int signal)
{
    const std::lock_guard guard(mutex);
    if (!held)
        DieBySignal(signal);
    if (group != 0)
        ::kill(-group, first == 0 ? signal : SIGKILL);
    if (first == 0)
        first = signal;
}

// Answers the process's number, which is its group's as well, or 0.
pid_t Interruption::StartShell(const char* command) const
{
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&files, STDERR_FILENO, STDOUT_FILENO);
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK);
    ::posix_spawnattr_setsigmask(&attributes, &formerMask);
    const char* words[] = {"sh", "-c", command, nullptr};
    pid_t process = 0;
    if (::posix_spawn(&process, "/bin/sh", &files, &attributes, const_cast<char**>(words), environ) != 0)
        process = 0;
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&files);
    return process;
}

void Interruption::SetGroup(pid_t newGroup)
{
    const std::lock_guard guard(mutex);
    group = newGroup;
    if (group != 0 && first != 0) // it came before there was anybody to pass it on to
        ::kill(-group, first);
}

void DieBySignal(int signal)
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, signal);
    ::signal(signal, SIG_DFL);
    ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    ::raise(signal);
    std::_Exit(128 + signal);
}

} // namespace wren
