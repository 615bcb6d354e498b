#include "wren/desktop/PaintThread.h"

#include "vetch/support/ThreadStart.h"

#include <QCoreApplication>
#include <QRunnable>
#include <QThreadPool>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <semaphore>
#include <string>
#include <thread>

#include <unistd.h>

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
std::atomic<pid_t> gThread{0};

// What the thread does first. It has nothing of its own: what went to that thread by Qt's own locks alone would look
// like a race to a sanitizer that cannot see them.
class Greeting final : public QRunnable {
public:
    Greeting() { setAutoDelete(false); }
    void run() override
    {
        gThread = gettid();
        gStarted.release();
    }
};

// Qt's own wait is over before the thread has released its data. A process that ends in between leaves them behind,
// which the search for leaks reports.
void WaitForThreadsEnd()
{
    constexpr std::chrono::seconds kLongestEnd(1);
    const auto limit = std::chrono::steady_clock::now() + kLongestEnd;
    const std::string thread = "/proc/self/task/" + std::to_string(gThread.load());
    std::error_code error;
    QThreadPool::globalInstance()->waitForDone();
    while (std::filesystem::exists(thread, error) && std::chrono::steady_clock::now() < limit)
        std::this_thread::yield();
}

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
    if (!gStarted.try_acquire_for(kLongestStart))
        return false;
    qAddPostRoutine(WaitForThreadsEnd);
    return true;
}

} // namespace wren
