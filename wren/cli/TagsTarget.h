// A tags file that is to be made.
#pragma once

#include <optional>
#include <string>
#include <sys/types.h>

namespace wren {

// Knows what stands at the place of a tags file from before it is made, so that it can be told afterwards whether the
// file is a new one. The unfinished file is the one that is moved there in the end.
class TagsTarget {
public:
    TagsTarget(std::string file, std::string unfinished);

    // What stands in the way: a directory, or a file that is no tags file and so is somebody's own. Nothing when all is well.
    std::optional<std::string> Obstacle() const;

    bool HadFile() const { return before.has_value(); }
    bool IsNew() const; // whether the file was put there since

    // What an earlier run may have left there would be moved into place as if it had been made by this one.
    void RemoveUnfinished() const;

private:
    struct Identity {
        dev_t device;
        ino_t inode;
        timespec written;

        bool operator==(const Identity& other) const;
    };
    static std::optional<Identity> Look(const std::string& path); // nothing when there is no file

    const std::string file;
    const std::string unfinished;
    const std::optional<Identity> before;
};

} // namespace wren
