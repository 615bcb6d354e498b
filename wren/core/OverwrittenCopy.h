// What a file held before it was written in place, for the start after a kill.
#pragma once

#include "base/Descriptor.h"

#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace wren {

struct DiskSteps;

// A copy in StateDirectory()/overwritten, locked by its process and gone again unless it is kept. Any thread.
class OverwrittenCopy {
public:
    explicit OverwrittenCopy(const DiskSteps& steps); // borrowed
    ~OverwrittenCopy();
    OverwrittenCopy(const OverwrittenCopy&) = delete;
    OverwrittenCopy& operator=(const OverwrittenCopy&) = delete;

    // The copy and its name are on the disk afterwards. It knows 'path', the old text, and 'next' when it sees it.
    // Once; false, with the reason in '*error'.
    bool Make(const std::string& path, const std::string& old, std::string_view next, std::string* error);
    void Keep() { path.clear(); }
    const std::string& Path() const { return path; }

private:
    const DiskSteps& steps;
    std::string path;
    base::Descriptor file;
};

struct OverwrittenText {
    std::string path; // of the file that was being written
    std::string text; // what it held before
    std::time_t savedAt = 0;
    std::string file; // the copy
};

// The copies that processes which are gone have left of files that are neither the old text nor the new one, nor there
// any more; the oldest first. Other copies of theirs, second ones of a text, and unfinished ones, for which nothing was
// overwritten yet, are removed. A damaged copy is passed over and stays. A text that is offered stays until its copy's
// file is removed. Any thread.
std::vector<OverwrittenText> LeftOverwritten();

} // namespace wren
