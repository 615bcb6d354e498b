// The directory for ctags' temporary files, one for each source that it reads.
#pragma once

#include "base/WorkingDirectory.h"

#include <functional>
#include <memory>
#include <string>
#include <sys/statvfs.h>

namespace tagging {

// A directory in memory that all users share, and a function for its free space.
struct SharedMemory {
    std::string directory = "/dev/shm";
    std::function<int(const char* directory, struct statvfs* room)> room = ::statvfs;
};

// In memory if there is room for the files and their texts, otherwise elsewhere. Making and removing a file in memory
// costs a tenth of what it does on a disk. The next run removes the files of killed runs from memory, even if there is
// no room.
class Scratch {
public:
    explicit Scratch(const std::string& otherPlace, // a writable directory
                     const SharedMemory& memory = SharedMemory());
    ~Scratch();

    const std::string& Directory() const { return directory; }

private:
    std::string inMemory; // the user's directory for all current runs; it may not exist
    std::unique_ptr<base::WorkingDirectory> place;
    std::string directory;
};

} // namespace tagging
