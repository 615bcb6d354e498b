// The time since some fixed moment.
#pragma once

#include "vetch/support/Types.h"

// Microseconds; never goes back. Any thread.
bigtime_t system_time();

namespace vetch {

// Stops the clock at 'now'; only AdvanceVirtualClock moves it. For tests and scripted sessions.
void UseVirtualClock(bigtime_t now);
void AdvanceVirtualClock(bigtime_t microseconds);
void UseRealClock();

} // namespace vetch
