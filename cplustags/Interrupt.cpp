#include "cplustags/Interrupt.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <sys/eventfd.h>
#include <unistd.h>

namespace cplustags {

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

std::atomic<int> gSignal{0};
std::atomic<int> gEvent{-1};
static_assert(std::atomic<int>::is_always_lock_free, "a handler of signals must not wait for a lock");

} // namespace

void Interrupt(int number)
{
    const int before = errno;
    int none = 0;
    gSignal.compare_exchange_strong(none, number);
    const std::uint64_t one = 1;
    if (::write(gEvent, &one, sizeof one) < 0) {
        // It is readable already.
    }
    errno = before;
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
    gEvent = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    for (const int number : kSignals) {
        struct sigaction action = {};
        ::sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            continue;
        action = {};
        action.sa_handler = Interrupt; // without SA_RESTART: a call that waits is to be broken off
        ::sigaction(number, &action, nullptr);
    }
}

bool Interrupted()
{
    return gSignal != 0;
}

int InterruptDescriptor()
{
    return gEvent;
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
