// The state that the workers of a run share.
#pragma once

#include "base/CancelToken.h"
#include "tagging/WorkQueue.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <mutex>
#include <string>

namespace tagging {

struct TaggingCounts {
    size_t files = 0; // tagged
    size_t tags = 0;
    size_t tooLong = 0; // tags that fit into no line
    size_t crashed = 0; // files
    size_t tookTooLong = 0;
    size_t unreadable = 0;

    TaggingCounts& operator+=(const TaggingCounts& other);
    size_t FailedFiles() const { return crashed + tookTooLong + unreadable; }
};

// The queue of files, the number of files done, and whether the work continues: it ends early when it has failed or is
// cancelled.
class TaggingRun {
public:
    static constexpr size_t kStops = 2;

    // Whether many failures without a success end the work: the cause cannot be the files then.
    enum class EarlyFailures { EndTheWork, AreNormal };

    // 'cancel' must outlive it.
    TaggingRun(const base::CancelToken& cancel, EarlyFailures failures) : cancel(cancel), failures(failures) {}

    // For any thread.
    WorkQueue& Queue() { return queue; }
    bool GoesOn();
    std::array<int, kStops> StopDescriptors() const; // for poll(): one becomes readable when the work must end early
    void FileDone() { ++done; }
    void FileFailed();
    size_t Done() const { return done; }  // including failed ones
    void Fail(const std::string& reason); // the first reason counts
    std::string Failure() const;          // "" when there is none

private:
    const base::CancelToken& cancel;
    const EarlyFailures failures;
    WorkQueue queue;
    std::atomic<size_t> done{0};
    std::atomic<size_t> failed{0};
    mutable std::mutex mutex; // for all members below
    std::string failure;
};

} // namespace tagging
