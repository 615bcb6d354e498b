// A directory for unfinished work. It is removed at the end or, after a kill, by the next run.
#pragma once

#include "base/Descriptor.h"

#include <string>
#include <string_view>

namespace base {

// Its name is ".NAME.cplustags-XXXXXX", and it holds a lock while in use. Creating one removes its unlocked siblings,
// whatever their NAME: the next run for "tags" removes that of a killed run for "tags.tmp". Links are never followed
// and pipes never waited for. Directories of other users, or that only look similar, stay.
//
// Errors are texts that name the directory. Not thread-safe, except for Path().
class WorkingDirectory {
public:
    // In 'parent', an absolute path. On failure Error() is not empty.
    WorkingDirectory(const std::string& parent, const std::string& name);
    ~WorkingDirectory();
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;

    const std::string& Error() const { return error; }
    const std::string& Path() const { return path; }

private:
    bool TakeLock();
    void Fail(const std::string& where);

    std::string error;
    std::string path;
    base::Descriptor lock;
};

// Removes what killed runs left in 'parent'.
void RemoveAbandonedIn(const std::string& parent);

} // namespace base
