// A lock that its holder may take again.
#pragma once

#include <mutex>

// Recursive; any thread. Lock() waits and answers true; pair each with an Unlock() on the same thread.
class BLocker {
public:
    BLocker() = default;
    explicit BLocker(const char* name); // the name is for people who debug; it is not kept
    BLocker(const BLocker&) = delete;
    BLocker& operator=(const BLocker&) = delete;

    bool Lock();
    void Unlock();

private:
    std::recursive_mutex mutex;
};
