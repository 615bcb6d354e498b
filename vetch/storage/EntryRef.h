// Names a file by its directory and its name in it, whether or not it exists.
#pragma once

#include <string>

// A value type. Equal when directory and name are the same text; nothing is read from the disk to compare. The path is
// normalised as BPath does.
struct EntryRef {
    const char* name; // the leaf, inside this object; null when unset

    EntryRef();
    explicit EntryRef(const char* path); // a relative path is taken from the process's directory; null or "" is unset
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
