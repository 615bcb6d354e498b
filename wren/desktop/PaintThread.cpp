#include "wren/desktop/PaintThread.h"

#include "vetch/support/ThreadStart.h"

#include <QRunnable>
#include <QThreadPool>

#include <chrono>
#include <semaphore>

namespace wren {

namespace {

// Qt does not report that a thread has not started.
bool ThreadsStart()
{
    std::thread probe = vetch::StartThread(nullptr, [] {});
    if (!probe.joinable())
        return false;
    probe.join();
    return true;
}

std::counting_semaphore<> gStarted{0};

// What the thread does first. It has nothing of its own: what went to that thread by Qt's own locks alone would look
// like a race to a sanitizer that cannot see them.
class Greeting final : public QRunnable {
public:
    Greeting() { setAutoDelete(false); }
    void run() override { gStarted.release(); }
};

} // namespace

bool HoldPaintThread()
{
    constexpr std::chrono::seconds kLongestStart(
        10); // reached only when another program took the last thread meanwhile
    static Greeting greeting;
    if (!ThreadsStart())
        return false;
    QThreadPool* const pool = QThreadPool::globalInstance();
    pool->setMaxThreadCount(1);
    pool->setExpiryTimeout(-1);
    pool->start(&greeting);
    return gStarted.try_acquire_for(kLongestStart);
}

} // namespace wren
