// The two ends of a pipe.
#pragma once

#include "base/Descriptor.h"
#include "base/Result.h"

#include <fcntl.h>
#include <unistd.h>

namespace base {

struct Pipe {
    Descriptor reading;
    Descriptor writing;
};

// Child programs do not inherit the ends.
inline Result<Pipe> OpenPipe()
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return SystemError("cannot open a pipe");
    return Pipe{Descriptor(ends[0]), Descriptor(ends[1])};
}

} // namespace base
