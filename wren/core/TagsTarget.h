// The target of a tags run.
#pragma once

#include <optional>
#include <string>

namespace wren {

// Makes sure that a run replaces a tags file and nothing else. The unfinished file takes its place at the end. A tree
// may come from a stranger, so nothing at either name is written through, moved into, or taken for the run's own.
class TagsTarget {
public:
    TagsTarget(std::string file, std::string unfinished);

    // The obstacle, with the remedy, in words for the user: a link, a directory, or a user's file that is not a tags
    // file. nullopt when there is none.
    std::optional<std::string> Obstacle() const;
    std::optional<std::string> ObstacleToMove() const; // only at the file's path, once the unfinished one is made

    bool HadFile() const { return hadFile; } // before the run

    bool HasUnfinished() const; // a plain file stands there

    // Removes an earlier run's file, which would otherwise be moved into place as this run's. Call it only when there
    // is no obstacle.
    void RemoveUnfinished() const;

    // Replaces the file by the unfinished one and keeps its permissions; false, with errno, on failure.
    bool Move() const;

private:
    const std::string file;
    const std::string unfinished;
    const bool hadFile;
};

} // namespace wren
