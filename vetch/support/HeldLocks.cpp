#include "vetch/support/HeldLocks.h"

#include <cassert>

namespace vetch {

namespace {

thread_local int heldLocks = 0;

} // namespace

int HeldLocks()
{
    return heldLocks;
}

void CountLock()
{
    ++heldLocks;
}

void CountUnlock()
{
    assert(heldLocks > 0);
    --heldLocks;
}

} // namespace vetch
