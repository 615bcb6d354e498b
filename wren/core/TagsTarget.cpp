#include "wren/core/TagsTarget.h"

#include "base/Descriptor.h"
#include "tagsfile/TagsFileKind.h"
#include "vetch/support/ShellEscape.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace wren {

namespace {

namespace fs = std::filesystem;

bool StatusOf(const std::string& path, struct stat* status)
{
    return ::lstat(path.c_str(), status) == 0;
}

bool IsThere(const std::string& path)
{
    struct stat status;
    return StatusOf(path, &status);
}

std::string AboutLink(const std::string& path)
{
    std::error_code unknown;
    const fs::path target = fs::read_symlink(path, unknown);
    std::string text = path + " is a link to " + target.string() + ", and tags are never written through a link";
    const fs::path meant =
        fs::weakly_canonical(fs::path(path).parent_path() / target, unknown); // "" for a loop of links
    if (meant.filename() == "tags" && fs::path(path).filename() == "tags")
        return text + "; make them where it leads, with:  wren tags " + EscapedPath(meant.parent_path()) +
               "\n  or remove the link";
    return text + "; remove it, or move it away";
}

std::optional<std::string> ObstacleAt(const std::string& path)
{
    struct stat status;
    if (!StatusOf(path, &status))
        return std::nullopt;
    if (S_ISLNK(status.st_mode))
        return AboutLink(path);
    if (S_ISDIR(status.st_mode))
        return path + " is a directory, and stands where a tags file is to be written; move it away";
    switch (tagsfile::WhatIs(path)) {
    case tagsfile::Target::Foreign:
        return path + " is not a tags file, and stands where one is to be written; move it away";
    case tagsfile::Target::Unreadable:
        return path + " cannot be read, and may not be a tags file: " + std::strerror(errno) + "; move it away";
    default:
        return std::nullopt;
    }
}

// Follows no link, so that a link made meanwhile does not pass the permissions to its target. False, with errno, on
// failure.
bool SetPermissions(const std::string& path, mode_t permissions)
{
    const base::Descriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    return file.IsOpen() && ::fchmod(file.Number(), permissions) == 0;
}

} // namespace

TagsTarget::TagsTarget(std::string file, std::string unfinished)
    : file(std::move(file)), unfinished(std::move(unfinished)), hadFile(IsThere(this->file))
{
}

std::optional<std::string> TagsTarget::Obstacle() const
{
    if (std::optional<std::string> obstacle = ObstacleToMove())
        return obstacle;
    return ObstacleAt(unfinished);
}

std::optional<std::string> TagsTarget::ObstacleToMove() const
{
    return ObstacleAt(file);
}

bool TagsTarget::HasUnfinished() const
{
    struct stat status;
    return StatusOf(unfinished, &status) && S_ISREG(status.st_mode);
}

void TagsTarget::RemoveUnfinished() const
{
    ::unlink(unfinished.c_str());
}

bool TagsTarget::Move() const
{
    constexpr mode_t kPermissions = 0777;
    struct stat old;
    if (StatusOf(file, &old) && S_ISREG(old.st_mode) && !SetPermissions(unfinished, old.st_mode & kPermissions))
        return false;
    return ::rename(unfinished.c_str(), file.c_str()) == 0;
}

} // namespace wren
