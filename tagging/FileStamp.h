// Detects that a file has changed.
#pragma once

#include <cstdint>
#include <sys/stat.h>

namespace tagging {

// The state of a file when its content was read.
struct FileStamp {
    std::uint64_t size = 0;    // bytes
    std::int64_t modified = 0; // nanoseconds since 1970
    std::uint64_t inode = 0;

    static FileStamp Of(const struct stat& status);
    bool operator==(const FileStamp&) const = default;
};

} // namespace tagging
