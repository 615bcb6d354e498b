// Lets threads of a test wait for each other.
#pragma once

#include "tests/support/WaitLimit.h"

#include <condition_variable>
#include <mutex>

// Closed at first; once opened, it stays open. Any thread.
class Gate {
public:
    void Open()
    {
        std::lock_guard guard(mutex);
        open = true;
        changed.notify_all();
    }
    void Wait()
    {
        const WaitLimit limit("the test's gate had been opened");
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return open; });
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool open = false;
};
