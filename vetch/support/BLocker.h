// A recursive lock.
#pragma once

#include <mutex>

// Any thread. Lock() waits and returns true; pair each with an Unlock() on the same thread.
class BLocker {
public:
    BLocker() = default;
    explicit BLocker(const char* name); // the name is ignored
    BLocker(const BLocker&) = delete;
    BLocker& operator=(const BLocker&) = delete;

    bool Lock();
    void Unlock();

private:
    std::recursive_mutex mutex;
};
