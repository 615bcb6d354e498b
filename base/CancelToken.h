// A request to stop running work.
#pragma once

#include "base/Descriptor.h"

#include <atomic>

namespace base {

// Long work checks the token between two steps; work that waits also polls its descriptor. A request cannot be
// withdrawn: use a new token for new work. Any thread. The token must outlive everything that holds a reference to it.
class CancelToken {
public:
    CancelToken();

    void Cancel() noexcept; // safe in a signal handler; keeps errno
    bool IsCancelled() const { return isCancelled; }

    // Readable from the first Cancel() on, for poll(). -1, which poll() ignores, if the system had no descriptor left.
    int Descriptor() const { return event.Number(); }

private:
    static_assert(std::atomic<bool>::is_always_lock_free, "a handler of signals must not wait for a lock");

    std::atomic<bool> isCancelled{false};
    base::Descriptor event;
};

} // namespace base
