// The target of a tags run.
#pragma once

#include "base/FileIdentity.h"

#include <optional>
#include <string>

namespace wren {

// Records the file at the target's path before the run, to know afterwards whether the file is new. The unfinished file
// replaces it in the end. A tree may come from a stranger: whatever has either name is not written through, moved into,
// or mistaken for the run's file.
class TagsTarget {
public:
    TagsTarget(std::string file, std::string unfinished);

    // The obstacle, with the remedy, in words for the user: a link, a directory, or a user's file that is not a tags
    // file. nullopt when there is none.
    std::optional<std::string> Obstacle() const;
    std::optional<std::string> ObstacleToMove() const; // only at the file's path, once the unfinished one is made

    bool HadFile() const { return before.has_value(); }
    bool IsNew() const; // whether the file was replaced since

    bool HasUnfinished() const; // a plain file stands there

    // Removes an earlier run's file, which would otherwise be moved into place as this run's. Call it only when there
    // is no obstacle.
    void RemoveUnfinished() const;

    // Replaces the file by the unfinished one and keeps its permissions; false, with errno, on failure.
    bool Move() const;

private:
    const std::string file;
    const std::string unfinished;
    const std::optional<base::FileIdentity> before;
};

} // namespace wren
