#include "wren/desktop/PaintThread.h"

#include "vetch/support/ThreadStart.h"

#include <QSemaphore>
#include <QThreadPool>

#include <memory>

namespace wren {

namespace {

// Qt does not tell that a thread has not started.
bool ThreadsStart()
{
    std::thread probe = vetch::StartThread(nullptr, [] {});
    if (!probe.joinable())
        return false;
    probe.join();
    return true;
}

} // namespace

bool HoldPaintThread()
{
    constexpr int kLongestStart = 10'000; // milliseconds; only where the last thread went to somebody else meanwhile
    if (!ThreadsStart())
        return false;
    QThreadPool* const pool = QThreadPool::globalInstance();
    pool->setMaxThreadCount(1);
    pool->setExpiryTimeout(-1);
    const auto started = std::make_shared<QSemaphore>();
    pool->start([started] { started->release(); });
    return started->tryAcquire(1, kLongestStart);
}

} // namespace wren
