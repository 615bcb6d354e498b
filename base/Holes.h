// Sparse files: those that are much longer than what anybody has written to them.
#pragma once

#include <sys/types.h>

namespace base {

// Holes of fewer bytes in all are read like anything else: it takes no more than about a second.
constexpr off_t kManyBytes = off_t(1) << 30;

// Whether the open file's holes are more than kManyBytes and more than half of it; false where the file system does not
// say what is a hole. What it has compressed, or has not put on the disk yet, is none. For a file that takes as much
// room as it is long this costs an fstat(). Leaves the file's position as it was. Any thread.
bool IsMostlyHoles(int descriptor);

} // namespace base
