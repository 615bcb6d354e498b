#include "wren/core/Interruption.h"

#include "vetch/support/ThreadStart.h"

#include <cstdlib>
#include <pthread.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace wren {

namespace {

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

// Not used otherwise. It ends the watching thread, which waits only for signals.
int EndSignal()
{
    return SIGRTMIN;
}

} // namespace

Interruption::Interruption() : watched(SignalsNotIgnored())
{
    ::prctl(PR_SET_CHILD_SUBREAPER, 1); // so that it can wait for a dead shell's group
    // SIGTTOU: some terminals would stop a background job that shows its progress.
    formerTerminalOutput = ::signal(SIGTTOU, SIG_IGN);
    // A command's output may have lost its reader. Dying of SIGPIPE would leave later files out of the tags.
    formerLostReader = ::signal(SIGPIPE, SIG_IGN);
    sigset_t blocked = watched;
    sigaddset(&blocked, EndSignal());
    ::pthread_sigmask(SIG_BLOCK, &blocked, &formerMask);
    watcher = vetch::StartThread(nullptr, [this] { Watch(); });
    if (!watcher.joinable())
        ::pthread_sigmask(SIG_SETMASK, &formerMask, nullptr);
}

Interruption::~Interruption()
{
    if (watcher.joinable()) {
        ::pthread_kill(watcher.native_handle(), EndSignal());
        watcher.join();
        ::pthread_sigmask(SIG_SETMASK, &formerMask, nullptr);
    }
    ::signal(SIGPIPE, formerLostReader);
    ::signal(SIGTTOU, formerTerminalOutput);
    ::prctl(PR_SET_CHILD_SUBREAPER, 0);
}

void Interruption::Hold(std::function<void(int)> taker)
{
    const std::lock_guard guard(mutex);
    handOn = std::move(taker);
}

void Interruption::Release()
{
    const std::lock_guard guard(mutex);
    handOn = nullptr;
}

int Interruption::Signal() const
{
    const std::lock_guard guard(mutex);
    return first;
}

void Interruption::Watch()
{
    sigset_t awaited = watched;
    sigaddset(&awaited, EndSignal());
    for (int signal = 0; ::sigwait(&awaited, &signal) == 0 && signal != EndSignal();)
        Take(signal);
}

void Interruption::Take(int signal)
{
    const std::lock_guard guard(mutex);
    if (!handOn)
        DieBySignal(signal);
    if (first == 0)
        first = signal;
    handOn(signal);
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
