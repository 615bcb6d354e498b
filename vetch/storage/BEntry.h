// A place in the file system, whether or not something is there.
#pragma once

#include "vetch/support/Types.h"

#include <string>

class BDirectory;
class BPath;
struct EntryRef;
struct stat;

// A value type holding a normalised absolute path and no descriptor. Distinct objects may be used on distinct threads.
// Null arguments give an unset entry; outputs may alias the object itself. With 'traverse', a link at the path is
// followed when it is set; a link that leads nowhere keeps its own path.
class BEntry {
public:
    BEntry() = default;
    BEntry(const char* path, bool traverse = false);
    BEntry(const BDirectory* directory, const char* leaf, bool traverse = false); // an absolute leaf stands alone
    BEntry(const EntryRef* ref, bool traverse = false);

    // InitCheck()'s answer. A missing leaf keeps its path: GetPath() works on it.
    status_t SetTo(const char* path, bool traverse = false);
    status_t SetTo(const BDirectory* directory, const char* leaf, bool traverse = false);
    status_t SetTo(const EntryRef* ref, bool traverse = false);
    void Unset();

    status_t InitCheck() const; // as of when it was set: B_OK, B_ENTRY_NOT_FOUND when nothing was there, B_ERROR unset
    bool Exists() const;        // now

    // B_ERROR for an unset entry, which unsets the output. The root has no parent: B_ENTRY_NOT_FOUND, output unset.
    // These three work on a path where nothing is, too.
    status_t GetParent(BEntry* parent) const;
    status_t GetPath(BPath* path) const;
    status_t GetRef(EntryRef* ref) const;
    status_t GetStat(struct stat* status) const; // of a link itself; B_ENTRY_NOT_FOUND when nothing is there

private:
    friend class BDirectory;
    std::string path; // "" when unset
    status_t status = -1;
};
