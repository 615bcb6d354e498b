// Files with a large size and almost no content.
#pragma once

#include <sys/stat.h>

namespace cplustags {

// A few bytes of an archive can create a file of terabytes, which would take hours to read, or all memory for a single
// line. Text never looks like this, even when a file system compresses it.
inline bool IsMostlyHoles(const struct stat& file)
{
    constexpr off_t kSmall = 64 * 1024 * 1024; // always read: it takes no time
    constexpr off_t kBlock = 512;
    return file.st_size > kSmall && file.st_blocks * kBlock < file.st_size / 64;
}

} // namespace cplustags
