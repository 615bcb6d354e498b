// A cache directory of the test program's own.
#pragma once

#include "tests/support/TempDirectory.h"

#include <cstdlib>

// What one process learns of a file is no other test's, whose file may well be in the same place of the disk later.
inline const struct OwnCache {
    OwnCache() { ::setenv("XDG_CACHE_HOME", directory.Path().c_str(), 1); }

    TempDirectory directory;
} kOwnCache;
