#include "vetch/support/Cancellation.h"

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

const std::atomic<bool>& vetch::ReadingCancelledFlag()
{
    return gCancelled;
}
