#include "vetch/app/WakeUp.h"

#include <mutex>

namespace vetch {

namespace {

struct WakeUp {
    std::mutex mutex;
    std::function<void()> wake;
};

// Never destroyed: a thread may still end while the process does.
WakeUp& TheWakeUp()
{
    static WakeUp* const wakeUp = new WakeUp;
    return *wakeUp;
}

} // namespace

void SetWakeUp(std::function<void()> wake)
{
    WakeUp& wakeUp = TheWakeUp();
    std::lock_guard guard(wakeUp.mutex);
    wakeUp.wake = std::move(wake);
}

void WakeDocumentThread()
{
    // Called with the mutex held: SetWakeUp() promises that the previous function is not called after its return.
    WakeUp& wakeUp = TheWakeUp();
    std::lock_guard guard(wakeUp.mutex);
    if (wakeUp.wake)
        wakeUp.wake();
}

} // namespace vetch
