// Ends long reads early when the process is about to quit.
#pragma once

#include <atomic>

namespace vetch {

// While 'cancel' is true, readers of long files see the end at their next block. What they have read is incomplete:
// check ReadingIsCancelled() before keeping it. Any thread, and signal handlers.
void CancelReading(bool cancel);

// Cheap enough for inner loops. Any thread.
bool ReadingIsCancelled();

// The variable itself, for readers that do not include this header.
const std::atomic<bool>& ReadingCancelledFlag();

} // namespace vetch
