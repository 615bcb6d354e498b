// One git work tree, as far as it decides which files count. Git itself is never run: the configuration of a tree may
// name programs for it to start.
#pragma once

#include "symbols/update/GitIndex.h"
#include "symbols/update/IgnoreRules.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace symbols {

// Immutable, apart from what it reads when it is needed first; any thread.
class GitTree {
public:
    using Pointer = std::shared_ptr<const GitTree>; // null: not in a work tree

    // The work tree whose top is this directory (absolute, without a trailing "/"); null when it is not one.
    static Pointer At(const std::string& top);
    static Pointer Around(const std::string& directory); // the nearest one at or above it

    const std::string& Top() const { return top; }
    const std::string& Directory() const { return directory; } // with HEAD and index

    // What the user's own file and "info/exclude" ignore.
    IgnoreRules::Pointer OuterRules() const;

    // Paths are absolute, below the top.
    bool Tracks(std::string_view path) const { return Index().Tracks(Relative(path)); }
    bool TracksBelow(std::string_view path) const { return Index().TracksBelow(Relative(path)); }

    explicit GitTree(std::string top, std::string directory);

private:
    std::string_view Relative(std::string_view path) const { return path.substr(top.size() + 1); }
    const GitIndex& Index() const;

    const std::string top;
    const std::string directory;
    const std::string common; // of all work trees of the repository
    mutable std::once_flag onceRead;
    mutable std::optional<GitIndex> index; // seldom needed: only ignored files may be tracked nevertheless
};

} // namespace symbols
