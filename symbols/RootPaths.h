// The paths of a root's files: absolute ones, and those in its index.
#pragma once

#include "symbols/store/Snapshot.h"

#include <optional>
#include <string>
#include <string_view>

namespace symbols {

// Whether a path is that of a file. A text without one has a path that is not absolute.
inline bool IsPathOfFile(std::string_view path)
{
    return path.starts_with('/');
}

// Any thread.
class RootPaths {
public:
    explicit RootPaths(const std::string& root); // absolute; "" for files that have none

    const std::string& Root() const { return root; } // without "/" at the end

    // As File::path; nullopt when the path is not below the root, or there is none.
    std::optional<std::string> Below(std::string_view absolute) const;
    // The path under which the index knows the file, also when it is reached through a link. 'project' may be null.
    std::string InIndex(std::string_view absolute, const Snapshot* project) const;
    std::string Absolute(std::string_view path) const; // of a File::path

private:
    const std::string root;
    const std::string realRoot; // without links
};

} // namespace symbols
