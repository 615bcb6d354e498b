// A file's directory and its name in it; the file may not exist.
#pragma once

#include <string>

// A value type. Equality compares the texts of directory and name without reading the disk. The path is normalised as
// in BPath.
struct EntryRef {
    const char* name; // points into this object; null when unset

    EntryRef();
    explicit EntryRef(const char* path); // relative to the process's directory; null or "" is unset
    EntryRef(const EntryRef& other);
    EntryRef& operator=(const EntryRef& other);
    ~EntryRef();

    std::string Path() const; // directory and name; "" when unset
    bool operator==(const EntryRef& other) const;
    bool operator!=(const EntryRef& other) const;

private:
    void Assign(const std::string& normalisedPath);

    std::string directory;
    std::string leaf;
};
