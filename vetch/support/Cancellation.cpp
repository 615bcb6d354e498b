#include "vetch/support/Cancellation.h"

#include <atomic>

namespace {

std::atomic<bool> gCancelled = false;
static_assert(std::atomic<bool>::is_always_lock_free, "signal handlers set it");

} // namespace

void vetch::CancelReading(bool cancel)
{
    gCancelled = cancel;
}

bool vetch::ReadingIsCancelled()
{
    return gCancelled;
}
