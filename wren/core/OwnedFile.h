// Files of the user's state that belong to a process for as long as it lives.
#pragma once

#include "base/Descriptor.h"

#include <optional>
#include <string>
#include <vector>

namespace wren {

// Makes a file of a name that none had before, also no process of the same number, with 'end' behind it; locks it, and
// returns its descriptor. The lock ends with the process or the descriptor. Where a file system has no locks, it has
// none. Not open, with errno, when it cannot be made. Any thread.
base::Descriptor MakeOwnedFile(const std::string& directory, const std::string& end, std::string* path);

// Such a file of a process that is gone. While this lives, other processes see it as left as well.
class LeftFile {
public:
    explicit LeftFile(const std::string& path);

    bool IsLeft() const { return isLeft; } // false also for what is not a file, or cannot be locked

private:
    const base::Descriptor file;
    bool isLeft = false;
};

// The paths of what is in it, sorted; none when it cannot be read.
std::vector<std::string> EntriesIn(const std::string& directory);

} // namespace wren
