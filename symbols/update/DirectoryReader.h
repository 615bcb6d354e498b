// Reads all entries of a directory at once.
#pragma once

#include "base/Descriptor.h"

#include <string>
#include <string_view>
#include <vector>

namespace symbols {

// Keeps one descriptor. Not thread-safe.
class DirectoryReader {
public:
    enum class Kind { File, Link, Directory };
    struct Entry { // a plain file, a link or a directory; without "." and ".."
        std::string_view name;
        Kind kind;
    };

    // 'followsLink': the path itself may be a link to a directory.
    DirectoryReader(const std::string& path, bool followsLink);

    int Problem() const { return problem; } // the errno that prevented reading; 0 for none
    int Number() const { return directory.Number(); }
    const std::vector<Entry>& Entries() const { return entries; }

private:
    bool ReadNames(std::vector<std::pair<size_t, Kind>>& starts);

    base::Descriptor directory;
    int problem = 0;
    std::string names; // with a zero behind each
    std::vector<Entry> entries;
};

} // namespace symbols
