#include "vetch/app/LooperLock.h"

#include <cassert>

namespace vetch {

bool LooperLock::Acquire(Guard& guard, std::condition_variable& changed, const bool& refused)
{
    if (refused)
        return false;
    if (!IsHeldByCaller()) {
        const std::uint64_t ticket = nextTicket++;
        changed.wait(guard, [&] { return refused || servedTicket == ticket; });
        // Refused tickets are never served: no thread gets the lock any more.
        if (refused)
            return false;
        owner = CurrentThread();
    }
    ++depth;
    return true;
}

void LooperLock::Release(std::condition_variable& changed)
{
    assert(IsHeldByCaller() && depth > 0);
    if (--depth > 0)
        return;
    owner = kNoThread;
    ++servedTicket;
    changed.notify_all();
}

} // namespace vetch
