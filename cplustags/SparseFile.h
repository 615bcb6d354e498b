// Files that claim to be large and have next to nothing in them.
#pragma once

#include <sys/stat.h>

namespace cplustags {

// A few bytes of an archive can bring a file of terabytes, which would take hours to read, or all of the memory for a
// single line. No text is like this, whatever a file system makes of it by compression.
inline bool IsMostlyHoles(const struct stat& file)
{
    constexpr off_t kSmall = 64 * 1024 * 1024; // is read at once in any case
    constexpr off_t kBlock = 512;
    return file.st_size > kSmall && file.st_blocks * kBlock < file.st_size / 64;
}

} // namespace cplustags
