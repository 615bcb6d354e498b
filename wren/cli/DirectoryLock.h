// One run in a directory at a time.
#pragma once

#include <string>

namespace wren {

// Keeps two runs from making tags in one directory at the same time, since they would use the same unfinished file: the
// later one waits for the earlier, however that ends.
class DirectoryLock {
public:
    explicit DirectoryLock(const std::string& directory);
    ~DirectoryLock();
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;

private:
    int directory;
};

} // namespace wren
