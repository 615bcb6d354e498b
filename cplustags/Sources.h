// The sources of a run, with their names in the tags file.
#pragma once

#include "base/Descriptor.h"
#include "cplustags/FileList.h"
#include "cplustags/Options.h"
#include "cplustags/Place.h"
#include "cplustags/Progress.h"

#include <cstddef>
#include <functional>
#include <string>

namespace cplustags {

struct FoundSource {
    std::string path;  // absolute
    std::string field; // its name in the tags file
};

// The files that FileList finds. Names that do not fit into a tags file are reported to 'progress' and left out. Not
// thread-safe.
class Sources {
public:
    // Throws Failure when the list cannot be opened. 'goOn' is as for FileList; 'progress' must outlive it.
    Sources(const Options& options, const Place& place, Progress& progress, std::function<bool()> goOn);

    bool Next(FoundSource& source); // false at the end
    void CheckList() const;         // call it at the end; throws Failure when the list was not read completely

    bool HasNames() const { return files.HasNames(); }
    size_t Missing() const { return files.Missing(); }
    size_t Unreadable() const { return files.Unreadable(); }
    size_t Unnameable() const { return unnameable; }

private:
    int Open(const std::string& list);

    const std::string directory;
    Progress& progress;
    base::Descriptor list;
    FileList files;
    size_t unnameable = 0;
};

} // namespace cplustags
