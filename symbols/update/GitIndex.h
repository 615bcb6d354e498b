// The tracked files of a git work tree.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace symbols {

// Reads the names in git's index file, versions 2 to 4. A damaged file ends the reading where the damage begins. A
// split index is read with its shared one; names that only the shared one has and git has removed since count as
// tracked. Immutable; any thread.
class GitIndex {
public:
    // 'gitDirectory' has the file "index"; without one nothing is tracked. 'hashLength' is 20 bytes, or 32 with
    // SHA-256.
    GitIndex(const std::string& gitDirectory, size_t hashLength);

    // 'path' is relative to the work tree.
    bool Tracks(std::string_view path) const;
    bool TracksBelow(std::string_view directory) const; // also a submodule at this path

    size_t Size() const { return names.size(); }

private:
    void Read(const std::string& gitDirectory, const std::string& file, bool isShared);

    const size_t hashLength;
    std::vector<std::string> names; // in byte order
};

} // namespace symbols
