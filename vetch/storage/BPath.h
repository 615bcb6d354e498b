// An absolute path without "//", "." or "..".
#pragma once

#include <string>

class BEntry;

// A value type. Normalised as text alone: links are not followed. "" when unset.
class BPath {
public:
    BPath() = default;
    explicit BPath(const BEntry* entry); // null or unset gives an unset path
    explicit BPath(const char* path);    // a relative path is taken from the process's directory; null or "" is unset

    const char* Path() const { return path.c_str(); } // lives as long as this object is unchanged

private:
    std::string path;
};
