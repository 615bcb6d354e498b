// Sparse files: much longer than the data that was written to them.
#pragma once

#include <sys/types.h>

namespace base {

// Files with fewer bytes of holes are read as usual: that takes about a second at most.
constexpr off_t kManyBytes = off_t(1) << 30;

// Whether the open file's holes are more than kManyBytes and more than half of it. False when the file system does not
// report holes. Compressed data and data that is not on the disk yet are not holes. For a fully allocated file the cost
// is one fstat(). Keeps the file's position. Any thread.
bool IsMostlyHoles(int descriptor);

} // namespace base
