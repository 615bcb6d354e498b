// The sources to tag: those named on the command line, then those of a list.
#pragma once

#include "cplustags/BrokenNames.h"
#include "cplustags/NameLines.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

namespace cplustags {

class Progress;

// Gives each regular file that can be read, once, by its absolute path. Directories, devices and pipes are passed over:
// lists made by "find" have directories in them, and a pipe would not end. What cannot be read is told to 'progress'.
//
// A list has a name a line, but a name may have line breaks in it, and "find" prints them as they are. So a line that
// names no file is tried with those behind it, a few of them; and one that leads elsewhere with those before it, so
// that no tree can have files outside of it tagged (see BrokenNames). Bytes of names mean nothing else. Not
// thread-safe.
class FileList {
public:
    // 'list' and 'goOn' are as NameLines takes them; names are relative to 'directory', the current one. 'tree' is the
    // directory whose tags are made: what its own name has before a line break is no name of a list.
    FileList(std::vector<std::string> files, int list, std::string directory, std::string tree, Progress& progress,
             std::function<bool()> goOn);

    bool Next(std::string& path); // false at the end

    bool HasNames() const { return hasNames; }                 // whether anything has been named so far
    size_t Missing() const { return missing; }                 // named, but not there
    size_t Unreadable() const { return unreadable; }           // there, but not to be read
    const std::string& Error() const { return lines.Error(); } // of the list itself

private:
    bool NextName(std::string& name);
    size_t LinesOfName(std::string& name);
    size_t LinesThatComplete(std::string& name);
    void Pass(size_t count);
    bool BeginsTree(const std::string& name) const;
    bool IsToBeTagged(const std::string& name);
    void Report(const std::string& name, int reason);

    std::deque<std::string> files;
    NameLines lines;
    BrokenNames brokenNames;
    const std::string directory;
    const std::string tree;
    Progress& progress;
    std::unordered_set<std::string> seen;
    bool hasNames = false;
    size_t missing = 0;
    size_t unreadable = 0;
};

} // namespace cplustags
