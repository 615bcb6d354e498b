#include "vetch/support/BLocker.h"

#include "vetch/support/HeldLocks.h"

BLocker::BLocker(const char*) {}

bool BLocker::Lock()
{
    mutex.lock();
    vetch::CountLock();
    return true;
}

void BLocker::Unlock()
{
    vetch::CountUnlock();
    mutex.unlock();
}
