// A path in the file system; its file may not exist.
#pragma once

#include "vetch/support/Types.h"

#include <string>

class BDirectory;
class BPath;
struct EntryRef;
struct stat;

// A value type holding a normalised absolute path and no descriptor. Distinct objects may be used on distinct threads.
// Null arguments give an unset entry; outputs may alias the object itself. With 'traverse', setting it follows a link
// at the path; a link that leads nowhere keeps its own path.
class BEntry {
public:
    BEntry() = default;
    BEntry(const char* path, bool traverse = false);
    BEntry(const BDirectory* directory, const char* leaf, bool traverse = false); // an absolute leaf stands alone
    BEntry(const EntryRef* ref, bool traverse = false);

    // Returns InitCheck(). A missing leaf keeps its path: GetPath() works on it.
    status_t SetTo(const char* path, bool traverse = false);
    status_t SetTo(const BDirectory* directory, const char* leaf, bool traverse = false);
    status_t SetTo(const EntryRef* ref, bool traverse = false);
    void Unset();

    status_t InitCheck() const; // when it was set: B_OK, B_ENTRY_NOT_FOUND when nothing was there; B_ERROR: unset
    bool Exists() const;        // now

    // An unset entry gives B_ERROR and unsets the output. The root has no parent: B_ENTRY_NOT_FOUND, output unset.
    // These three also work on the path of a missing file.
    status_t GetParent(BEntry* parent) const;
    status_t GetPath(BPath* path) const;
    status_t GetRef(EntryRef* ref) const;
    status_t GetStat(struct stat* status) const; // does not follow links; B_ENTRY_NOT_FOUND for a missing file

private:
    friend class BDirectory;
    std::string path; // "" when unset
    status_t status = -1;
};
