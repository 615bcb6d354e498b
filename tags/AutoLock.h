// Holds a lock for the length of a scope.
#pragma once

#include "vetch/support/BLocker.h"

// Lets go at the end only of what it got.
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
