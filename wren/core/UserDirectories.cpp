#include "wren/core/UserDirectories.h"

#include "base/UserDirectories.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wren {

namespace {

bool IsDirectory(const std::string& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The last existing part of the path, or the first one that is not a directory; the directory itself when all of it
// exists.
std::string LastThatIsThere(const std::string& directory)
{
    std::string last = "/";
    struct stat status;
    for (size_t end = 0; end != std::string::npos;) {
        end = directory.find('/', end + 1);
        const std::string part = directory.substr(0, end);
        if (::lstat(part.c_str(), &status) != 0)
            return last;
        last = part;
        if (!IsDirectory(part))
            return last;
    }
    return last;
}

bool IsFull(const struct statvfs& disk)
{
    return disk.f_bavail == 0 || (disk.f_files != 0 && disk.f_favail == 0);
}

} // namespace

std::string ConfigDirectory()
{
    return base::ConfigDirectory("wren");
}

std::string StateDirectory()
{
    return base::StateDirectory("wren");
}

std::string AdviceAbout(const std::string& directory, int (*diskState)(const char* path, struct statvfs* state))
{
    const std::string there = LastThatIsThere(directory);
    constexpr const char* kElsewhere = ", or set XDG_STATE_HOME to another directory and start Wren again.";
    if (!IsDirectory(there))
        return there + " is not a directory: move it away" + kElsewhere;
    struct statvfs disk;
    if (diskState(there.c_str(), &disk) != 0)
        return "";
    if ((disk.f_flag & ST_RDONLY) != 0)
        return there + " is on a file system that is mounted read-only: mount it for writing" + kElsewhere;
    if (::faccessat(AT_FDCWD, there.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        return "You have no right to write to " + there + ": give yourself that right (chmod u+rwx)" + kElsewhere;
    if (IsFull(disk))
        return "The disk of " + there + " is full: make room on it" + kElsewhere;
    return "";
}

bool MakeUserDirectory(const std::string& directory, std::string* error)
{
    for (size_t end = directory.find('/', 1); true; end = directory.find('/', end + 1)) {
        const std::string part = directory.substr(0, end);
        if (::mkdir(part.c_str(), 0700) != 0) {
            const int reason = errno;
            if (!IsDirectory(part)) {
                *error = part + ": " + std::strerror(reason);
                return false;
            }
        }
        if (end == std::string::npos)
            return true;
    }
}

} // namespace wren
