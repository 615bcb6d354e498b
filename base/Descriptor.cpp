#include "base/Descriptor.h"

#include <cerrno>

namespace base {

Descriptor::~Descriptor()
{
    const int reason = errno;
    Close();
    errno = reason;
}

bool Descriptor::Close()
{
    return number < 0 || ::close(std::exchange(number, -1)) == 0;
}

} // namespace base
