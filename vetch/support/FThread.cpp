#include "vetch/support/FThread.h"

#include "vetch/support/HeldLocks.h"
#include "vetch/support/ThreadStart.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <condition_variable>
#include <list>
#include <mutex>
#include <sys/resource.h>
#include <system_error>
#include <thread>

namespace {

constexpr const char* kLoss = "work in the background is put off until it is asked for again";

struct Worker {
    std::thread thread;
    bool ended = false;
};

// All workers that were started and are not joined yet.
struct Workers {
    std::mutex mutex; // a leaf
    std::condition_variable changed;
    std::list<Worker> all;
    int running = 0;
    int detached = 0; // those of StartDetached()

    bool AreIdle() const { return running == 0 && detached == 0; }
};

// Never destroyed: a thread may still end while the process does.
Workers& TheWorkers()
{
    static Workers* const workers = new Workers;
    return *workers;
}

thread_local bool onWorker = false;

std::atomic<void (*)()> gWatcher = nullptr;

void TellWatcher()
{
    if (void (*const watcher)() = gWatcher)
        watcher();
}

void Join(std::list<Worker> workers)
{
    for (Worker& worker : workers)
        worker.thread.join();
}

// Removes the ended workers, for their join when others start: a long session keeps no dead threads.
std::list<Worker> TakeEnded(Workers& workers)
{
    std::list<Worker> ended;
    for (auto worker = workers.all.begin(); worker != workers.all.end();) {
        const auto next = std::next(worker);
        if (worker->ended)
            ended.splice(ended.end(), workers.all, worker);
        worker = next;
    }
    return ended;
}

// Without this, a thread that computes for a second delays the thread that handles keys by whole time slices (some 4
// ms).
void GiveWay()
{
    constexpr int kSteps = 10;  // behind the thread that started it
    constexpr int kLowest = 19; // the lowest priority that exists
    // On Linux process 0 is the calling thread alone.
    ::setpriority(PRIO_PROCESS, 0, std::min(::getpriority(PRIO_PROCESS, 0) + kSteps, kLowest));
}

} // namespace

FThread::FThread(FunctionObject* function) : function(function)
{
    Workers& workers = TheWorkers();
    std::list<Worker> made(1);
    const auto worker = made.begin();
    std::function<void()> body = [this, worker, &workers] {
        onWorker = true;
        GiveWay();
        RunOnce();
        {
            std::lock_guard guard(workers.mutex);
            worker->ended = true;
            --workers.running;
            workers.changed.notify_all();
        }
        TellWatcher();
    };
    std::list<Worker> ended;
    {
        std::lock_guard guard(workers.mutex);
        ended = TakeEnded(workers);
        worker->thread = vetch::StartThread(kLoss, std::move(body));
        if (worker->thread.joinable()) {
            workers.all.splice(workers.all.end(), made);
            ++workers.running;
        }
    }
    Join(std::move(ended));
    if (!made.empty())
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    TellWatcher();
}

FThread::~FThread() = default;

void FThread::RunOnce()
{
    vetch::CallGuarded([this] { (*function)(); });
    delete this;
}

namespace vetch {

bool StartDetached(const char* loss, std::function<void()> body)
{
    Workers& workers = TheWorkers();
    const auto count = [&workers](int change) {
        const std::lock_guard guard(workers.mutex);
        workers.detached += change;
        workers.changed.notify_all();
    };
    std::function<void()> counted = [body = std::move(body), count]() mutable {
        CallGuarded(body);
        body = nullptr; // what it holds ends before its work counts as done
        count(-1);
    };
    count(1);
    std::thread thread = StartThread(loss, std::move(counted));
    if (!thread.joinable()) {
        count(-1);
        return false;
    }
    thread.detach();
    return true;
}

bool BackgroundIsIdle()
{
    Workers& workers = TheWorkers();
    const std::lock_guard guard(workers.mutex);
    return workers.AreIdle();
}

bool WaitForIdleBackground(std::chrono::milliseconds limit)
{
    assert(HeldLocks() == 0);
    Workers& workers = TheWorkers();
    std::unique_lock lock(workers.mutex);
    return workers.changed.wait_for(lock, limit, [&] { return workers.AreIdle(); });
}

void JoinThreads()
{
    assert(HeldLocks() == 0);
    assert(!onWorker);
    Workers& workers = TheWorkers();
    std::unique_lock lock(workers.mutex);
    while (!workers.all.empty()) {
        std::list<Worker> taken;
        taken.swap(workers.all);
        lock.unlock();
        Join(std::move(taken));
        lock.lock();
    }
    // Another thread may be joining the rest.
    workers.changed.wait(lock, [&] { return workers.running == 0; });
}

void SetThreadsWatcher(void (*watcher)())
{
    gWatcher = watcher;
}

bool ThreadsAreIdle()
{
    Workers& workers = TheWorkers();
    std::lock_guard guard(workers.mutex);
    return workers.running == 0;
}

} // namespace vetch
