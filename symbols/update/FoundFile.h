// One source that a walk has found.
#pragma once

#include "tagging/FileStamp.h"

#include <cstdint>
#include <string>

namespace symbols {

struct FoundFile {
    std::string path; // relative to the root
    tagging::FileStamp stamp;
    std::uint64_t device = 0;
    bool isLink = false;
    bool hasHardLinks = false;
    bool needsLook = false; // without a suffix: a header if its content says so
};

} // namespace symbols
