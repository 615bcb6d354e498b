#include "wren/core/ProcessGroup.h"

#include "base/Descriptor.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace wren {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kNoProcess = -1;
constexpr int kCannotRun = 127; // a shell's status for a program that it cannot start
constexpr int kFirstOfMore = 3;

class Actions {
public:
    Actions() { ::posix_spawn_file_actions_init(&actions); }
    ~Actions() { ::posix_spawn_file_actions_destroy(&actions); }
    Actions(const Actions&) = delete;
    Actions& operator=(const Actions&) = delete;

    posix_spawn_file_actions_t actions;
};

class Attributes {
public:
    Attributes() { ::posix_spawnattr_init(&attributes); }
    ~Attributes() { ::posix_spawnattr_destroy(&attributes); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    posix_spawnattr_t attributes;
};

// Signals that this thread holds back for itself are meant for the command as well.
sigset_t MaskOfCommands()
{
    sigset_t mask;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigdelset(&mask, signal);
    return mask;
}

// A descriptor with a number of its own above those that the command is given, so that none is overwritten by another.
base::Descriptor OutOfTheWay(int descriptor, size_t more)
{
    return base::Descriptor(::fcntl(descriptor, F_DUPFD_CLOEXEC, kFirstOfMore + static_cast<int>(more)));
}

// Returns the process's number, which is its group's as well; -1 with errno when there is none.
pid_t Start(const std::string& command, const ProcessGroup::Streams& streams)
{
    Actions files;
    ::posix_spawn_file_actions_addopen(&files.actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&files.actions, streams.output, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&files.actions, streams.output, STDERR_FILENO);
    std::vector<base::Descriptor> moved;
    int reason = 0;
    for (const int each : streams.more) {
        moved.push_back(OutOfTheWay(each, streams.more.size()));
        if (!moved.back().IsOpen())
            reason = errno;
        ::posix_spawn_file_actions_adddup2(&files.actions, moved.back().Number(),
                                           kFirstOfMore + static_cast<int>(moved.size()) - 1);
    }
    Attributes attributes;
    const sigset_t mask = MaskOfCommands();
    ::posix_spawnattr_setflags(&attributes.attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK);
    ::posix_spawnattr_setsigmask(&attributes.attributes, &mask);
    const char* words[] = {"sh", "-c", command.c_str(), nullptr};
    pid_t process = kNoProcess;
    if (reason == 0)
        reason = ::posix_spawn(&process, "/bin/sh", &files.actions, &attributes.attributes, const_cast<char**>(words),
                               environ);
    errno = reason;
    return reason == 0 ? process : kNoProcess;
}

// The process's number stays taken, and with it its group's, so that a signal cannot reach strangers. Returns whether
// the process was ended by a signal.
bool WaitUntilEnded(pid_t process)
{
    siginfo_t end = {};
    while (::waitid(P_PID, static_cast<id_t>(process), &end, WEXITED | WNOWAIT) < 0 && errno == EINTR)
        continue;
    return end.si_code == CLD_KILLED || end.si_code == CLD_DUMPED;
}

int Reap(pid_t process)
{
    int status = kNoProcess;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR)
        continue;
    return status;
}

} // namespace

int ProcessGroup::Run(const std::string& command, const Streams& streams)
{
    if (Stopped() != 0) {
        errno = ECANCELED;
        return kNoProcess;
    }
    const pid_t shell = Start(command, streams);
    if (shell == kNoProcess)
        return kNoProcess;
    SetGroup(shell);
    const bool isKilled = WaitUntilEnded(shell);
    const bool isLeft = SetGroup(0) || isKilled;
    // A stop may have come between the shell's end and now, and whoever kills a shell may have killed nothing else.
    // What the shell started is still there, and would write behind the back of the next run.
    if (isLeft)
        ::kill(-shell, SIGTERM);
    const int status = Reap(shell);
    if (isLeft)
        WaitForGroup(shell);
    return status;
}

// A shell may die before the programs that it started, and they have something to tidy up. Those that are not our
// children can only be polled; what does not end in time, or before a further stop, is killed.
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

// Answers whether the command was stopped.
bool ProcessGroup::SetGroup(pid_t newGroup)
{
    const std::lock_guard guard(mutex);
    group = newGroup;
    if (group != 0 && stopped != 0) // it came before there was anybody to pass it on to
        ::kill(-group, last);
    return stopped != 0;
}

int ShellStatus(int status)
{
    return WIFEXITED(status) ? WEXITSTATUS(status) : WIFSIGNALED(status) ? 128 + WTERMSIG(status) : kCannotRun;
}

} // namespace wren
