// The lock of a looper. Private to vetch/app.
#pragma once

#include "vetch/app/ThreadNumber.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace vetch {

// Recursive and first come first served: a busy looper cannot keep others out.
//
// Guarded by its user's mutex, which every caller holds.
class LooperLock {
public:
    using Guard = std::unique_lock<std::mutex>;

    // Waits for the lock on 'changed', which its user notifies when 'refused' changes; false once 'refused' is true.
    bool Acquire(Guard& guard, std::condition_variable& changed, const bool& refused);
    void Release(std::condition_variable& changed);

    bool IsFree() const { return depth == 0; }
    bool IsHeldByCaller() const { return owner == CurrentThread(); }

private:
    ThreadNumber owner = kNoThread;
    int depth = 0;
    std::uint64_t nextTicket = 0;
    std::uint64_t servedTicket = 0; // its holder has the lock or is about to wake up
};

} // namespace vetch
