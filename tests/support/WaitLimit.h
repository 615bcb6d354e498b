// Limits a test's wait: a broken wait fails in seconds and names what it waited for.
#pragma once

#include "vetch/support/FThread.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <ctime>
#include <string>
#include <unistd.h>

// A wait that takes longer than this object's limit ends the program, with all its tests: the awaited work still uses
// the test's objects. It needs no thread, since some tests count threads. May be nested; any thread.
class WaitLimit {
public:
    static constexpr time_t kSeconds = 20; // far more than any wait takes, even on a slow machine with a sanitizer

    // 'what' is a clause: "the load has ended".
    explicit WaitLimit(const char* what, time_t seconds = kSeconds)
    {
        const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
        message = std::string(test == nullptr ? "" : test->test_suite_name()) + "." +
                  (test == nullptr ? "" : test->name()) + ": waited " + std::to_string(seconds) + " seconds until " +
                  what + ", in vain\n";
        struct sigaction action = {};
        action.sa_sigaction = [](int, siginfo_t* info, void*) { GiveUp(info->si_value.sival_ptr); };
        action.sa_flags = SA_SIGINFO;
        ::sigaction(SIGALRM, &action, nullptr);
        struct sigevent event = {};
        event.sigev_notify = SIGEV_SIGNAL;
        event.sigev_signo = SIGALRM;
        event.sigev_value.sival_ptr = message.data();
        if (::timer_create(CLOCK_MONOTONIC, &event, &timer) != 0)
            return;
        hasTimer = true;
        const itimerspec limit = {{0, 0}, {seconds, 0}};
        ::timer_settime(timer, 0, &limit, nullptr);
    }
    ~WaitLimit()
    {
        if (hasTimer)
            ::timer_delete(timer);
    }
    WaitLimit(const WaitLimit&) = delete;
    WaitLimit& operator=(const WaitLimit&) = delete;

private:
    [[noreturn]] static void GiveUp(void* text)
    {
        const auto* const words = static_cast<const char*>(text);
        static_cast<void>(!::write(STDERR_FILENO, words, std::strlen(words)));
        ::_exit(1);
    }

    std::string message;
    timer_t timer = {};
    bool hasTimer = false;
};

// vetch::JoinThreads() with a limit.
inline void JoinThreads()
{
    const WaitLimit limit("all threads of the framework had ended");
    vetch::JoinThreads();
}
