// Where ctags puts its temporary files, one for each source that it reads.
#pragma once

#include "base/WorkingDirectory.h"

#include <functional>
#include <memory>
#include <string>
#include <sys/statvfs.h>

namespace tagging {

// A directory in memory that all users share, and how much room there is in it.
struct SharedMemory {
    std::string directory = "/dev/shm";
    std::function<int(const char* directory, struct statvfs* room)> room = ::statvfs;
};

// In memory, where making and removing a file costs a tenth of what it does on a disk, when there is room for the files
// and for their texts; else at another place. What is left there by a run that was killed goes with the next one, also
// where it has left no room.
class Scratch {
public:
    explicit Scratch(const std::string& otherPlace, // a directory that can be written to
                     const SharedMemory& memory = SharedMemory());
    ~Scratch();

    const std::string& Directory() const { return directory; }

private:
    std::string inMemory; // the user's directory for the programs that run now, which may not be there
    std::unique_ptr<base::WorkingDirectory> place;
    std::string directory;
};

} // namespace tagging
