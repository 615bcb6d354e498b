#include "cplustags/Interrupt.h"

#include <atomic>
#include <csignal>
#include <cstdlib>

namespace cplustags {

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

std::atomic<int> gSignal{0};
static_assert(std::atomic<int>::is_always_lock_free, "a handler of signals must not wait for a lock");

// Never destroyed: a signal may arrive until the very end.
base::CancelToken& Token()
{
    static base::CancelToken& token = *new base::CancelToken;
    return token;
}

} // namespace

void Interrupt(int number)
{
    int none = 0;
    gSignal.compare_exchange_strong(none, number);
    Token().Cancel();
}

namespace {

sigset_t Signals()
{
    sigset_t set;
    ::sigemptyset(&set);
    for (const int number : kSignals)
        ::sigaddset(&set, number);
    return set;
}

} // namespace

void CatchInterrupts()
{
    Token(); // must exist before the handler uses it
    for (const int number : kSignals) {
        struct sigaction action = {};
        ::sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            continue;
        action = {};
        action.sa_handler = Interrupt; // without SA_RESTART: it must interrupt blocking calls
        ::sigaction(number, &action, nullptr);
    }
}

const base::CancelToken& Interruption()
{
    return Token();
}

void DieOfInterrupt()
{
    const int number = gSignal;
    std::signal(number, SIG_DFL);
    sigset_t set;
    ::sigemptyset(&set);
    ::sigaddset(&set, number);
    ::sigprocmask(SIG_UNBLOCK, &set, nullptr);
    std::raise(number);
    std::abort();
}

InterruptsElsewhere::InterruptsElsewhere()
{
    const sigset_t set = Signals();
    ::pthread_sigmask(SIG_BLOCK, &set, &before);
}

InterruptsElsewhere::~InterruptsElsewhere()
{
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

} // namespace cplustags
