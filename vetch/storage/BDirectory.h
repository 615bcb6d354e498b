// A directory that can be looked into.
#pragma once

#include "vetch/support/Types.h"

#include <string>

class BEntry;

// A value type. A start directory that is a link to a directory opens.
class BDirectory {
public:
    explicit BDirectory(const BEntry* entry);
    explicit BDirectory(const char* path);

    status_t InitCheck() const; // B_ENTRY_NOT_FOUND when nothing is there, B_ERROR for what is no directory to search

    // Sets 'entry' to the entry of that exact name, of any kind; otherwise it is left unset.
    status_t FindEntry(const char* name, BEntry* entry, bool traverse = false) const;
    bool IsRootDirectory() const; // the path "/"
    status_t GetEntry(BEntry* entry) const;

private:
    friend class BEntry;
    std::string path; // "" when it is no directory
    status_t status = -1;
};
