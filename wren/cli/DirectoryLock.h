// One run in a directory at a time.
#pragma once

#include <string>

namespace wren {

// Keeps two runs from making tags in one directory at the same time, since they would use the same unfinished file: the
// later one waits for the earlier, however that ends, and says so on standard error.
//
// It is the lock of an empty file in the directory, which goes with it; one that a killed run has left is used again. The
// directory's own lock is the tags program's.
class DirectoryLock {
public:
    explicit DirectoryLock(const std::string& directory);
    ~DirectoryLock();
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;

private:
    const std::string path;
    int file = -1;
};

} // namespace wren
