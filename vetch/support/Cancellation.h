// Ends long reading early, once the process is about to quit.
#pragma once

#include <atomic>

namespace vetch {

// From the first call on, until it is taken back, whoever reads a file of any size finds its end at the next block.
// What was read by then is incomplete: ask ReadingIsCancelled() before it is kept. Any thread, and signal handlers.
void CancelReading(bool cancel);

// As cheap as reading a variable. Any thread.
bool ReadingIsCancelled();

// The variable itself, for readers that know nothing of this.
const std::atomic<bool>& ReadingCancelledFlag();

} // namespace vetch
