// Several workers that share a queue of files.
#pragma once

#include "tagging/Collector.h"
#include "tagging/Observer.h"
#include "tagging/Settings.h"
#include "tagging/TaggingRun.h"
#include "tagging/Worker.h"

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace tagging {

// Files that crash ctags or take too long are reported and left out. Any other failure of a ctags ends the whole work.
//
// Used by one thread. Each worker runs on its own thread; there are fewer when the system refuses threads, and Finish()
// does the work if there are none. The program must ignore SIGPIPE: a ctags that has died is detected by its end of
// output.
class WorkerPool {
public:
    // Throws std::system_error when no thread can be started. The program decides which signals its threads receive.
    using ThreadStarter = std::function<std::thread(std::function<void()> body)>;
    static std::thread SystemsThread(std::function<void()> body) { return std::thread(std::move(body)); }

    // Called on the owner's thread.
    using CollectorMaker = std::function<std::unique_ptr<Collector>()>;

    // All must outlive it. Cancelled work ends without a failure.
    WorkerPool(const Settings& settings, Observer& observer, const base::CancelToken& cancel,
               TaggingRun::EarlyFailures failures, CollectorMaker makeCollector, ThreadStarter start);
    ~WorkerPool();

    void Add(const std::string& path); // numbers count from 0 in this order. Does not block
    bool GoesOn();                     // shows the progress; false when adding more is useless
    void Finish();                     // waits until the work ends, fails or is cancelled
    void Fail(const std::string& reason) { run.Fail(reason); }
    std::string Failure() const { return run.Failure(); } // "" when there is none

    TaggingCounts Counts() const; // after Finish()

private:
    void StartWorker();
    void MakeWorker();
    void WorkHere();
    void Run(Worker& worker);

    const Settings& settings;
    Observer& observer;
    const CollectorMaker makeCollector;
    const ThreadStarter start;
    size_t files = 0;
    size_t nextStart = 0; // the number of files at which to start the next worker
    bool lacksThreads = false;
    TaggingRun run;
    std::vector<std::unique_ptr<Collector>> collectors;
    std::vector<std::unique_ptr<Worker>> workers;
    std::vector<std::thread> threads;
    std::mutex mutex; // for all members below
    std::condition_variable ended;
    size_t running = 0; // workers
};

} // namespace tagging
