// What the workers of one run share.
#pragma once

#include "base/CancelToken.h"
#include "tagging/WorkQueue.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace tagging {

struct TaggingCounts {
    size_t files = 0; // tagged
    size_t tags = 0;
    size_t tooLong = 0; // tags that no line can hold
    size_t crashed = 0; // files
    size_t tookTooLong = 0;
    size_t unreadable = 0;

    TaggingCounts& operator+=(const TaggingCounts& other);
    size_t FailedFiles() const { return crashed + tookTooLong + unreadable; }
};

// The files that wait, how many are done, and whether the work goes on: it ends early when it has failed or is
// cancelled.
class TaggingRun {
public:
    static constexpr size_t kStops = 2;

    explicit TaggingRun(const base::CancelToken& cancel) : cancel(cancel) {} // which must outlive it

    // For the thread that owns the run. The fields are those of the files in the order in which they were added;
    // workers may look at them once the queue is closed.
    void Add(const std::string& path, std::string field);
    const std::vector<std::string>& Fields() const { return fields; }

    // For any thread.
    WorkQueue& Queue() { return queue; }
    bool GoesOn();
    std::array<int, kStops> StopDescriptors() const; // for poll(): one is readable when the work is to end early
    void FileDone() { ++done; }
    void FileFailed();
    size_t Done() const { return done; }  // also those that failed
    void Fail(const std::string& reason); // the first reason counts
    std::string Failure() const;          // "" when there is none

private:
    const base::CancelToken& cancel;
    WorkQueue queue;
    std::vector<std::string> fields;
    std::atomic<size_t> done{0};
    std::atomic<size_t> failed{0};
    mutable std::mutex mutex; // for what follows
    std::string failure;
};

} // namespace tagging
