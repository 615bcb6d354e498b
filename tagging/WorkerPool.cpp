#include "tagging/WorkerPool.h"

#include <chrono>
#include <exception>
#include <system_error>

namespace tagging {

namespace {

// A queue this long is worth another ctags, which takes as long to start as a few files to read.
constexpr size_t kFilesForWorker = 32;

constexpr std::chrono::milliseconds kPatience{100};

} // namespace

WorkerPool::WorkerPool(const Settings& settings, Observer& observer, const base::CancelToken& cancel,
                       TaggingRun::EarlyFailures failures, CollectorMaker makeCollector, ThreadStarter start)
    : settings(settings), observer(observer), makeCollector(std::move(makeCollector)), start(std::move(start)),
      run(cancel, failures)
{
}

WorkerPool::~WorkerPool()
{
    run.Queue().Stop();
    for (std::thread& thread : threads)
        if (thread.joinable())
            thread.join();
}

void WorkerPool::Add(const std::string& path)
{
    run.Queue().Add({static_cast<unsigned>(files++), path});
    const bool wantsWorker =
        workers.empty() || (workers.size() < settings.jobs && run.Queue().Size() > kFilesForWorker);
    if (wantsWorker && files >= nextStart)
        StartWorker();
}

// A thread that did not start has left its collector behind.
void WorkerPool::MakeWorker()
{
    if (collectors.size() == workers.size())
        collectors.push_back(makeCollector());
    workers.push_back(std::make_unique<Worker>(settings, observer, run, *collectors.back()));
}

// If no thread can be started there is one worker less, and a later file tries again.
void WorkerPool::StartWorker()
{
    MakeWorker();
    const std::lock_guard lock(mutex);
    ++running;
    try {
        threads.push_back(start([this, worker = workers.back().get()] { Run(*worker); }));
    } catch (const std::system_error& error) {
        --running;
        workers.pop_back();
        nextStart = files + kFilesForWorker;
        if (!std::exchange(lacksThreads, true))
            observer.Say("the system starts no more threads (" + error.code().message() +
                         "): fewer sources are tagged at a time");
    }
}

void WorkerPool::WorkHere()
{
    MakeWorker();
    ++running;
    Run(*workers.back());
}

void WorkerPool::Run(Worker& worker)
{
    try {
        worker.Run();
    } catch (const std::exception& problem) { // out of memory
        run.Fail(problem.what());
    }
    const std::lock_guard lock(mutex);
    --running;
    ended.notify_all();
}

bool WorkerPool::GoesOn()
{
    observer.Show(run.Done(), files);
    return run.GoesOn();
}

void WorkerPool::Finish()
{
    run.Queue().Close();
    if (workers.empty() && files > 0)
        WorkHere();
    for (std::unique_lock lock(mutex); running > 0;) {
        ended.wait_for(lock, kPatience);
        lock.unlock();
        GoesOn();
        lock.lock();
    }
    for (std::thread& thread : threads)
        thread.join();
}

TaggingCounts WorkerPool::Counts() const
{
    TaggingCounts total;
    for (const std::unique_ptr<Worker>& worker : workers)
        total += worker->Counts();
    return total;
}

} // namespace tagging
