#include "tagging/WorkQueue.h"

#include <cstdint>
#include <sys/eventfd.h>

namespace tagging {

WorkQueue::WorkQueue() : stopping(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

void WorkQueue::Add(Work work)
{
    const std::lock_guard lock(mutex);
    works.push_back(std::move(work));
    changed.notify_one();
}

void WorkQueue::Close()
{
    const std::lock_guard lock(mutex);
    isClosed = true;
    changed.notify_all();
}

void WorkQueue::Stop()
{
    const std::lock_guard lock(mutex);
    isStopped = true;
    changed.notify_all();
    ::eventfd_write(stopping.Number(), 1);
}

std::optional<Work> WorkQueue::Take(bool wait)
{
    std::unique_lock lock(mutex);
    if (wait)
        changed.wait(lock, [this] { return !works.empty() || isClosed || isStopped; });
    if (works.empty() || isStopped)
        return std::nullopt;
    Work work = std::move(works.front());
    works.pop_front();
    return work;
}

size_t WorkQueue::Size() const
{
    const std::lock_guard lock(mutex);
    return works.size();
}

bool WorkQueue::IsStopped() const
{
    const std::lock_guard lock(mutex);
    return isStopped;
}

} // namespace tagging
