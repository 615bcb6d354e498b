// The queue of files for the workers.
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
    void Close(); // no more files will be added
    void Stop();  // from now on Take() returns nullopt

    // The next file. Nullopt with 'wait': there are no more files. Nullopt without it: there may be more later.
    std::optional<Work> Take(bool wait);

    size_t Size() const;
    bool IsStopped() const;
    int StopDescriptor() const { return stopping.Number(); } // for poll(): readable after Stop()

private:
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<Work> works;
    base::Descriptor stopping;
    bool isClosed = false;
    bool isStopped = false;
};

} // namespace tagging
