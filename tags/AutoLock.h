// Holds a lock for a scope.
#pragma once

#include "vetch/support/BLocker.h"

// Unlocks at the end only what it has locked.
class AutoLock {
public:
    explicit AutoLock(BLocker& locker) : locker(locker), locked(locker.Lock()) {}
    ~AutoLock()
    {
        if (locked)
            locker.Unlock();
    }
    AutoLock(const AutoLock&) = delete;
    AutoLock& operator=(const AutoLock&) = delete;

private:
    BLocker& locker;
    bool locked;
};
