#include "vetch/support/Clock.h"

#include <atomic>
#include <chrono>

namespace {

std::atomic<bool> isVirtual = false;
std::atomic<bigtime_t> virtualNow = 0;

} // namespace

bigtime_t system_time()
{
    if (isVirtual)
        return virtualNow;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

namespace vetch {

void UseVirtualClock(bigtime_t now)
{
    virtualNow = now;
    isVirtual = true;
}

void AdvanceVirtualClock(bigtime_t microseconds)
{
    virtualNow += microseconds;
}

void UseRealClock()
{
    isVirtual = false;
}

} // namespace vetch
