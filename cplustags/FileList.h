// The sources to tag: those of the command line, then those of a list.
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

// Returns each readable regular file once, by its absolute path. Directories, devices and pipes are skipped: lists made
// by "find" contain directories, and a pipe might never end. Unreadable files are reported to 'progress'.
//
// A list has one name per line, but "find" prints line breaks inside names unchanged. So a line that names no file is
// tried together with a few lines after it. A line that leads to a new place is tried together with those before it: no
// tree may get files outside of it tagged (see BrokenNames). No other bytes of names are special. Not thread-safe.
class FileList {
public:
    // 'list' and 'goOn' are as for NameLines. Names are relative to 'directory', the current one. 'tree' is the
    // directory to tag: the part of its name before a line break is not a name in a list.
    FileList(std::vector<std::string> files, int list, std::string directory, std::string tree, Progress& progress,
             std::function<bool()> goOn);

    bool Next(std::string& path); // false at the end

    bool HasNames() const { return hasNames; }                 // any name so far
    size_t Missing() const { return missing; }                 // named files that do not exist
    size_t Unreadable() const { return unreadable; }           // existing files that cannot be read
    const std::string& Error() const { return lines.Error(); } // an error in reading the list

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
