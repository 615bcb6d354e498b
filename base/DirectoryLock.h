// Allows one run in a directory at a time.
#pragma once

#include "base/Descriptor.h"

#include <functional>
#include <string>

namespace base {

// Keeps two programs from making tags in one directory at the same time, since they would use the same unfinished file.
// The later one waits until the earlier one ends, for any reason.
//
// Locks an empty file in the directory and removes it at the end; a file that a killed run left is reused. The
// directory's own lock belongs to the tags program. There is no lock, and no waiting, when something other than a plain
// file has the file's name, or when the file system has no locks.
class DirectoryLock {
public:
    // 'waits' is called once when it has to wait. It stops waiting, without the lock, as soon as 'givesUp' returns
    // true.
    DirectoryLock(const std::string& directory, const std::function<void()>& waits,
                  const std::function<bool()>& givesUp);
    ~DirectoryLock();
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;

private:
    bool Wait(const std::function<void()>& waits, const std::function<bool()>& givesUp) const;

    const std::string path;
    Descriptor file;
};

} // namespace base
