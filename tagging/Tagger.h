// Has files tagged by several ctags side by side.
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

// A file that crashes ctags, or takes too long, is reported and left out. Whatever else goes wrong with a ctags ends
// the whole work: nobody would notice that tags are missing.
//
// What comes out is the same for any number of jobs. Used by one thread; the workers have threads of their own, fewer
// when the system has no more to give; without any, Finish() does the work. The program ignores SIGPIPE: a ctags that
// has gone is noticed by its end.
class Tagger {
public:
    // Throws std::system_error when there is no thread to be had. It is for the program to say which signals its
    // threads take.
    using ThreadStarter = std::function<std::thread(std::function<void()> body)>;
    static std::thread SystemsThread(std::function<void()> body) { return std::thread(std::move(body)); }

    // All must outlive it. Cancelled work ends without a failure, and without a result.
    Tagger(const Settings& settings, Observer& observer, const base::CancelToken& cancel,
           ThreadStarter start = SystemsThread);
    ~Tagger();

    // 'field' is how the file is written in the tags file. Does not wait.
    void Add(const std::string& path, std::string field);

    // Shows how far the work is; false when it has failed and it makes no sense to add more.
    bool GoesOn();

    // Waits for the end of the work, or until it fails or is cancelled.
    void Finish();

    // After Finish():
    std::string Failure() const { return run.Failure(); }       // why there is no result; "" when there is one
    std::vector<std::unique_ptr<tagsfile::LineSource>> Lines(); // for Merged(); the tagger must outlive them
    bool IsTagged(size_t file) const { return tagged[file]; }   // by the order of Add()
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
    size_t nextStart = 0; // not before so many files were added
    bool lacksThreads = false;
    TaggingRun run;
    std::vector<bool> tagged;
    std::vector<std::unique_ptr<Worker>> workers;
    std::vector<std::thread> threads;
    TaggingCounts total;
    TagsByFile tooLong;
    std::mutex mutex; // for what follows
    std::condition_variable ended;
    size_t running = 0; // workers
};

} // namespace tagging
