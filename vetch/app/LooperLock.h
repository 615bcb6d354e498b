// The lock of a looper. Private to vetch/app.
#pragma once

#include "vetch/app/ThreadNumber.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace vetch {

// Recursive, and handed on in the order in which it was asked for: a busy looper cannot keep others out.
//
// Guarded by a mutex of its user's, with which everything here is called.
class LooperLock {
public:
    using Guard = std::unique_lock<std::mutex>;

    // Waits for the lock on 'changed', which its user notifies when 'refused' changes; false as soon as that is true.
    bool Acquire(Guard& guard, std::condition_variable& changed, const bool& refused);
    void Release(std::condition_variable& changed);

    bool IsFree() const { return depth == 0; }
    bool IsCallers() const { return owner == CurrentThread(); }

private:
    ThreadNumber owner = kNoThread;
    int depth = 0;
    std::uint64_t nextTicket = 0;
    std::uint64_t servedTicket = 0; // its holder has the lock or is about to wake up to it
};

} // namespace vetch
