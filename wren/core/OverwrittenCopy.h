// The old content of a file that is written in place, to restore after a kill.
#pragma once

#include "base/Descriptor.h"

#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace wren {

struct DiskSteps;

// A copy in StateDirectory()/overwritten, locked by its process, and removed at the end unless it is kept. Any thread.
class OverwrittenCopy {
public:
    explicit OverwrittenCopy(const DiskSteps& steps); // borrowed
    ~OverwrittenCopy();
    OverwrittenCopy(const OverwrittenCopy&) = delete;
    OverwrittenCopy& operator=(const OverwrittenCopy&) = delete;

    // Writes and syncs the copy and its name. The copy records 'path' and the old text, and recognises 'next'. Call
    // once; false, with the reason in '*error'.
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
    std::string text; // its old content
    std::time_t savedAt = 0;
    std::string file; // the copy
};

// Copies left by processes that are gone, of files that hold neither the old text nor the new one, or no longer exist;
// the oldest first. Removes their other copies: duplicates of a text, and unfinished ones, whose file was not
// overwritten yet. Skips and keeps a damaged copy. An offered text stays until its copy's file is removed. Any thread.
std::vector<OverwrittenText> LeftOverwritten();

} // namespace wren
