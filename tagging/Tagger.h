// Tags files with several concurrent ctags processes.
#pragma once

#include "tagging/Observer.h"
#include "tagging/Settings.h"
#include "tagging/TagStore.h"
#include "tagging/TaggingRun.h"
#include "tagsfile/LineSource.h"

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

class Worker;

// Files that crash ctags or take too long are reported and left out. Any other failure of a ctags ends the whole work:
// otherwise tags would be missing unnoticed.
//
// The result is the same for any number of jobs. Used by one thread. Each worker runs on its own thread; there are
// fewer when the system refuses threads, and Finish() does the work if there are none. The program must ignore SIGPIPE:
// a ctags that has died is detected by its end of output.
class Tagger {
public:
    // Throws std::system_error when no thread can be started. The program decides which signals its threads receive.
    using ThreadStarter = std::function<std::thread(std::function<void()> body)>;
    static std::thread SystemsThread(std::function<void()> body) { return std::thread(std::move(body)); }

    // All must outlive it. Cancelled work ends without a failure and without a result.
    Tagger(const Settings& settings, Observer& observer, const base::CancelToken& cancel,
           ThreadStarter start = SystemsThread);
    ~Tagger();

    // 'field' is the file's name in the tags file. Does not block.
    void Add(const std::string& path, std::string field);

    // Shows the progress; false when the work has failed and adding more is useless.
    bool GoesOn();

    // Waits until the work ends, fails or is cancelled.
    void Finish();

    // After Finish():
    std::string Failure() const { return run.Failure(); }       // the reason for a missing result; "" if there is one
    std::vector<std::unique_ptr<tagsfile::LineSource>> Lines(); // for Merged(); the tagger must outlive them
    bool IsTagged(size_t file) const { return tagged[file]; }   // in the order of Add()
    const std::vector<std::string>& Fields() const { return run.Fields(); }
    const TaggingCounts& Total() const { return total; }
    const TagsByFile& TooLong() const { return tooLong; } // 'TaggingCounts::tooLong', by file

private:
    void StartWorker();
    void WorkHere();
    void Run(Worker& worker);

    const Settings& settings;
    Observer& observer;
    const ThreadStarter start;
    size_t nextStart = 0; // the number of files at which to start the next worker
    bool lacksThreads = false;
    TaggingRun run;
    std::vector<bool> tagged;
    std::vector<std::unique_ptr<Worker>> workers;
    std::vector<std::thread> threads;
    TaggingCounts total;
    TagsByFile tooLong;
    std::mutex mutex; // for all members below
    std::condition_variable ended;
    size_t running = 0; // workers
};

} // namespace tagging
