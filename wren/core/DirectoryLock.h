// One run in a directory at a time.
#pragma once

#include "base/Descriptor.h"

#include <functional>
#include <string>

namespace wren {

// Keeps two programs from making tags in one directory at the same time, since they would use the same unfinished file:
// the later one waits for the earlier, however that ends.
//
// It is the lock of an empty file in the directory, which goes with it; one that a killed run has left is used again.
// The directory's own lock is the tags program's. What stands at the file's name and is not a plain file is not waited
// for: then, and on a file system without locks, there is none.
class DirectoryLock {
public:
    // 'waits' is called once when it has to wait; it gives up, without the lock, as soon as 'givesUp' is true.
    DirectoryLock(const std::string& directory, const std::function<void()>& waits,
                  const std::function<bool()>& givesUp);
    ~DirectoryLock();
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;

private:
    bool Wait(const std::function<void()>& waits, const std::function<bool()>& givesUp) const;

    const std::string path;
    base::Descriptor file;
};

} // namespace wren
