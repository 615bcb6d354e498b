#include "base/CancelToken.h"

#include <cerrno>
#include <sys/eventfd.h>

namespace base {

CancelToken::CancelToken() : event(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

void CancelToken::Cancel() noexcept
{
    const int before = errno;
    isCancelled = true;
    ::eventfd_write(event.Number(), 1); // fails only if it is already readable or was never opened
    errno = before;
}

} // namespace base
