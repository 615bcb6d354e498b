// State files that belong to a process for as long as it lives.
#pragma once

#include "base/Descriptor.h"

#include <optional>
#include <string>
#include <vector>

namespace wren {

// Makes a file with a name that no file had before, not even from a process with the same number, with 'end' behind it.
// Locks it and returns its descriptor. The lock ends with the process or the descriptor; a file system without locks
// gives none. Not open, with errno, on failure. Any thread.
base::Descriptor MakeOwnedFile(const std::string& directory, const std::string& end, std::string* path);

// A file left by a process that is gone. While this lives, other processes also see the file as left.
class LeftFile {
public:
    explicit LeftFile(const std::string& path);

    bool IsLeft() const { return isLeft; } // false also for a non-file, or when it cannot be locked

private:
    const base::Descriptor file;
    bool isLeft = false;
};

// The paths of a directory's entries, sorted; empty when it cannot be read.
std::vector<std::string> EntriesIn(const std::string& directory);

} // namespace wren
