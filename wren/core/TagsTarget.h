// A tags file that is to be made.
#pragma once

#include "base/FileIdentity.h"

#include <optional>
#include <string>

namespace wren {

// Knows what stands at the place of a tags file from before it is made, so that it can be told afterwards whether the
// file is a new one. The unfinished file is the one that takes its place in the end. A tree may come from a stranger,
// so nothing that stands at either name is written through, moved into, or taken for what a run has made.
class TagsTarget {
public:
    TagsTarget(std::string file, std::string unfinished);

    // What stands in the way, in words for the user, with the remedy: a link, a directory, or a file that is not a tags
    // file and so is somebody's own. Nothing when all is well.
    std::optional<std::string> Obstacle() const;
    std::optional<std::string> ObstacleToMove() const; // the same at the file's own place, once the other one is made

    bool HadFile() const { return before.has_value(); }
    bool IsNew() const; // whether the file was put there since

    bool HasUnfinished() const; // a plain file stands there

    // What an earlier run may have left there would be moved into place as if it had been made by this one. Call it
    // only when there is no obstacle.
    void RemoveUnfinished() const;

    // Puts the unfinished file in the other's place, with that one's permissions; false, with errno, when that fails.
    bool Move() const;

private:
    const std::string file;
    const std::string unfinished;
    const std::optional<base::FileIdentity> before;
};

} // namespace wren
