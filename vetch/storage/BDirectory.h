// A directory for searches by name.
#pragma once

#include "vetch/support/Types.h"

#include <string>

class BEntry;

// A value type. A path that is a link to a directory opens.
class BDirectory {
public:
    explicit BDirectory(const BEntry* entry);
    explicit BDirectory(const char* path);

    status_t InitCheck() const; // B_ENTRY_NOT_FOUND: nothing there; B_ERROR: not a searchable directory

    // Sets 'entry' to the entry of exactly that name, of any kind; otherwise unsets it.
    status_t FindEntry(const char* name, BEntry* entry, bool traverse = false) const;
    bool IsRootDirectory() const; // the path "/"
    status_t GetEntry(BEntry* entry) const;

private:
    friend class BEntry;
    std::string path; // "" when it is not a directory
    status_t status = -1;
};
