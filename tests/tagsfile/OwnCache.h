// A separate cache directory for the test program.
#pragma once

#include "tests/support/TempDirectory.h"

#include <cstdlib>

// A process's records must not reach other tests, whose files may later have the same inodes.
inline const struct OwnCache {
    OwnCache() { ::setenv("XDG_CACHE_HOME", directory.Path().c_str(), 1); }

    TempDirectory directory;
} kOwnCache;
