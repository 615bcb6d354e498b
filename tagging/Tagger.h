// Tags files with several concurrent ctags processes.
#pragma once

#include "tagging/Observer.h"
#include "tagging/Settings.h"
#include "tagging/TagCollector.h"
#include "tagging/WorkerPool.h"
#include "tagsfile/LineSource.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace tagging {

// Files that crash ctags or take too long are reported and left out. Any other failure of a ctags ends the whole work:
// otherwise tags would be missing unnoticed.
//
// The result is the same for any number of jobs. Used by one thread. Each worker runs on its own thread; there are
// fewer when the system refuses threads, and Finish() does the work if there are none. The program must ignore SIGPIPE:
// a ctags that has died is detected by its end of output.
class Tagger {
public:
    using ThreadStarter = WorkerPool::ThreadStarter;

    // All must outlive it. Cancelled work ends without a failure and without a result.
    Tagger(const Settings& settings, Observer& observer, const base::CancelToken& cancel,
           ThreadStarter start = WorkerPool::SystemsThread);

    // 'field' is the file's name in the tags file. Does not block.
    void Add(const std::string& path, std::string field);

    // Shows the progress; false when the work has failed and adding more is useless.
    bool GoesOn() { return pool.GoesOn(); }

    // Waits until the work ends, fails or is cancelled.
    void Finish();

    // After Finish():
    std::string Failure() const { return pool.Failure(); }      // the reason for a missing result; "" if there is one
    std::vector<std::unique_ptr<tagsfile::LineSource>> Lines(); // for Merged(); the tagger must outlive them
    bool IsTagged(size_t file) const { return tagged[file]; }   // in the order of Add()
    const std::vector<std::string>& Fields() const { return fields; }
    const TaggingCounts& Total() const { return total; }
    const TagsByFile& TooLong() const { return tooLong; } // 'TaggingCounts::tooLong', by file

private:
    void AddUp(const TagCollector& collector);

    std::vector<std::string> fields;       // by file number
    std::vector<TagCollector*> collectors; // of the pool
    WorkerPool pool;
    std::vector<bool> tagged;
    TaggingCounts total;
    TagsByFile tooLong;
};

} // namespace tagging
