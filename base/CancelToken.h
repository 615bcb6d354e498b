// A request to stop, between whoever makes it and the work that looks for it.
#pragma once

#include "base/Descriptor.h"

#include <atomic>

namespace base {

// Long work looks at the token between two steps; work that waits polls its descriptor too. A request stays: there is a
// new token for new work. Any thread; the token must outlive all that hold a reference to it.
class CancelToken {
public:
    CancelToken();

    void Cancel() noexcept; // allowed in a handler of signals; errno stays as it is
    bool IsCancelled() const { return isCancelled; }

    // Readable from the first Cancel() on, for poll(). -1, which poll() passes over, where the system had no more.
    int Descriptor() const { return event.Number(); }

private:
    static_assert(std::atomic<bool>::is_always_lock_free, "a handler of signals must not wait for a lock");

    std::atomic<bool> isCancelled{false};
    base::Descriptor event;
};

} // namespace base
