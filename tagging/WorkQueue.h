// Files that wait for a worker.
#pragma once

#include "base/Descriptor.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

namespace tagging {

struct Work {
    unsigned number; // of the file
    std::string path;
};

// Any thread.
class WorkQueue {
public:
    WorkQueue();

    void Add(Work work);
    void Close(); // no more will be added
    void Stop();  // nothing more is to be done: Take() gives nothing from now on

    // The next file. Nothing when there is none: with 'wait', that is the end; otherwise there may be some later.
    std::optional<Work> Take(bool wait);

    size_t Size() const;
    bool IsStopped() const;
    int StopDescriptor() const { return stopping.Number(); } // readable once it is stopped: for poll()

private:
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<Work> works;
    base::Descriptor stopping;
    bool isClosed = false;
    bool isStopped = false;
};

} // namespace tagging
