// How many of the framework's locks the calling thread holds.
#pragma once

namespace vetch {

// BLockers and the locks of loopers with threads of their own, recursive ones counted each time. Where a thread is
// about to wait for others it asserts that this is 0: a lock held there is a deadlock that only needs its moment.
int HeldLocks();

void CountLock();
void CountUnlock();

} // namespace vetch
