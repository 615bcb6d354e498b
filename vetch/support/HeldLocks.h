// How many of the framework's locks the calling thread holds.
#pragma once

namespace vetch {

// Counts BLockers and the locks of loopers that have threads; a recursive lock counts each time. A thread asserts that
// it is 0 before it waits for others: a lock held there can deadlock.
int HeldLocks();

void CountLock();
void CountUnlock();

} // namespace vetch
