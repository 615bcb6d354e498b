// The time since some fixed moment.
#pragma once

#include "vetch/support/Types.h"

// Microseconds, never going back. Any thread.
bigtime_t system_time();

namespace vetch {

// From now on the clock stands still at 'now' and moves only by AdvanceVirtualClock: for tests and scripted sessions.
void UseVirtualClock(bigtime_t now);
void AdvanceVirtualClock(bigtime_t microseconds);
void UseRealClock();

} // namespace vetch
