// Has files tagged by several ctags side by side.
#pragma once

#include "cplustags/LineSource.h"
#include "cplustags/Settings.h"
#include "cplustags/TagStore.h"
#include "cplustags/WorkQueue.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace cplustags {

class Progress;
class Worker;

// A file that crashes ctags, or takes too long, is reported and left out. Whatever else goes wrong with a ctags ends
// the whole work: nobody would notice that tags are missing.
//
// What comes out is the same for any number of jobs. Used by one thread; the workers have threads of their own, fewer
// when the system has no more to give; without any, Finish() does the work.
class Tagger {
public:
    // Throws std::system_error when there is no thread to be had. A door for tests.
    using ThreadStarter = std::function<std::thread(std::function<void()> body)>;
    static std::thread SystemsThread(std::function<void()> body) { return std::thread(std::move(body)); }

    // Both must outlive it.
    Tagger(const Settings& settings, Progress& progress, ThreadStarter start = SystemsThread);
    ~Tagger();

    // 'field' is how the file is written in the tags file. Does not wait.
    void Add(const std::string& path, std::string field);

    // Shows how far the work is; false when it has failed and it makes no sense to add more.
    bool GoesOn();

    // Waits for the end of the work, or until it fails or the program is interrupted.
    void Finish();

    // After Finish():
    std::string Failure() const;                              // why there is no result; "" when there is one
    std::vector<std::unique_ptr<LineSource>> Lines();         // for Merged(); the tagger must outlive them
    bool IsTagged(size_t file) const { return tagged[file]; } // by the order of Add()
    const std::vector<std::string>& Fields() const { return fields; }
    struct Counts {
        size_t files = 0; // tagged
        size_t tags = 0;
        size_t tooLong = 0; // tags that no line can hold
        size_t crashed = 0; // files
        size_t tookTooLong = 0;
        size_t unreadable = 0;

        Counts& operator+=(const Counts& other);
        size_t FailedFiles() const { return crashed + tookTooLong + unreadable; }
    };
    const Counts& Total() const { return total; }
    const TagsByFile& TooLong() const { return tooLong; } // 'Counts::tooLong', by file

private:
    friend class Worker;

    void StartWorker();
    void WorkHere();
    void Run(Worker& worker);
    void Fail(const std::string& reason); // any thread; the first reason counts
    void FileDone();                      // any thread
    void FileFailed();                    // any thread

    const Settings& settings;
    Progress& progress;
    const ThreadStarter start;
    size_t nextStart = 0; // not before so many files were added
    bool lacksThreads = false;
    WorkQueue queue;
    std::vector<std::string> fields;
    std::vector<bool> tagged;
    std::vector<std::unique_ptr<Worker>> workers;
    std::vector<std::thread> threads;
    Counts total;
    TagsByFile tooLong;
    std::atomic<size_t> done{0};
    std::atomic<size_t> failed{0};
    mutable std::mutex mutex; // for what follows
    std::condition_variable ended;
    size_t running = 0; // workers
    std::string failure;
};

} // namespace cplustags
