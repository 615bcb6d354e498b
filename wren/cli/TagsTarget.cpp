#include "wren/cli/TagsTarget.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace wren {

namespace {

namespace fs = std::filesystem;

// A tag has a name, a file and a place, with a tab between them.
bool BeginsAsTagsFile(const std::string& path)
{
    std::error_code unknown;
    const fs::file_status status = fs::status(path, unknown);
    if (fs::exists(status) && !fs::is_regular_file(status))
        return false; // opening a pipe would wait for whoever writes to it
    std::ifstream stream(path, std::ios::binary);
    std::string line;
    return !stream || !std::getline(stream, line) || line.starts_with("!_TAG_") ||
           std::count(line.begin(), line.end(), '\t') >= 2;
}

} // namespace

TagsTarget::TagsTarget(std::string file, std::string unfinished)
    : file(std::move(file)), unfinished(std::move(unfinished)), before(Look(this->file))
{
}

std::optional<std::string> TagsTarget::Obstacle() const
{
    std::error_code unknown;
    for (const std::string& path : {file, unfinished}) {
        const bool isDirectory = fs::is_directory(path, unknown);
        if (isDirectory || !BeginsAsTagsFile(path))
            return path + (isDirectory ? " is a directory" : " is no tags file") +
                   ", and stands where one is to be written; move it away";
    }
    return std::nullopt;
}

bool TagsTarget::IsNew() const
{
    const std::optional<Identity> now = Look(file);
    return now && now != before;
}

void TagsTarget::RemoveUnfinished() const
{
    ::unlink(unfinished.c_str());
}

bool TagsTarget::Identity::operator==(const Identity& other) const
{
    return device == other.device && inode == other.inode && written.tv_sec == other.written.tv_sec &&
           written.tv_nsec == other.written.tv_nsec;
}

std::optional<TagsTarget::Identity> TagsTarget::Look(const std::string& path)
{
    struct stat status;
    if (::lstat(path.c_str(), &status) != 0)
        return std::nullopt;
    return Identity{status.st_dev, status.st_ino, status.st_mtim};
}

} // namespace wren
