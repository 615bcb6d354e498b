// An absolute path without "//", "." or "..".
#pragma once

#include <string>

class BEntry;

// A value type. Normalised as text only: links are not followed. "" when unset.
class BPath {
public:
    BPath() = default;
    explicit BPath(const BEntry* entry); // null or unset gives an unset path
    explicit BPath(const char* path);    // relative to the process's directory; null or "" is unset

    const char* Path() const { return path.c_str(); } // valid while this object is unchanged

private:
    std::string path;
};
