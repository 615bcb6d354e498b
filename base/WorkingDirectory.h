// A directory for unfinished work that is removed at the end, and after a kill by the next run.
#pragma once

#include "base/Descriptor.h"

#include <string>
#include <string_view>

namespace base {

// It is called ".NAME.cplustags-XXXXXX" and holds a lock for as long as it is in use. Making one removes those beside
// it whose lock nobody holds, whatever their NAME: that of a run for "tags.tmp" goes when the next run is for "tags".
// Links are never followed and pipes never waited for there; what belongs to another user, or only looks alike, stays.
//
// Errors are texts that name the directory. Not thread-safe, but for Path().
class WorkingDirectory {
public:
    // In 'parent', which must be absolute. On failure Error() is not empty.
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

// Removes what killed runs have left in 'parent'.
void RemoveAbandonedIn(const std::string& parent);

} // namespace base
