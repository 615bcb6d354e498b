#include "tagging/TaggingRun.h"

namespace tagging {

namespace {

// If ctags fails on all of the first files, the cause is not the files.
constexpr size_t kMostFailures = 20;

} // namespace

TaggingCounts& TaggingCounts::operator+=(const TaggingCounts& other)
{
    files += other.files;
    tags += other.tags;
    tooLong += other.tooLong;
    crashed += other.crashed;
    tookTooLong += other.tookTooLong;
    unreadable += other.unreadable;
    return *this;
}

bool TaggingRun::GoesOn()
{
    if (cancel.IsCancelled())
        queue.Stop();
    return !queue.IsStopped();
}

std::array<int, TaggingRun::kStops> TaggingRun::StopDescriptors() const
{
    return {queue.StopDescriptor(), cancel.Descriptor()};
}

void TaggingRun::FileFailed()
{
    ++done;
    if (++failed >= kMostFailures && failed == done && failures == EarlyFailures::EndTheWork)
        Fail("none of the first " + std::to_string(kMostFailures) + " sources could be tagged");
}

void TaggingRun::Fail(const std::string& reason)
{
    {
        const std::lock_guard lock(mutex);
        if (failure.empty())
            failure = reason;
    }
    queue.Stop();
}

std::string TaggingRun::Failure() const
{
    const std::lock_guard lock(mutex);
    return failure;
}

} // namespace tagging
