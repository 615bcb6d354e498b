#include "base/FileIdentity.h"

namespace base {

FileIdentity FileIdentity::Of(const struct stat& status)
{
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim};
}

std::optional<FileIdentity> FileIdentity::At(const std::string& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return Of(status);
}

std::optional<FileIdentity> FileIdentity::OfPlainFile(int descriptor)
{
    struct stat status;
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return Of(status);
}

bool FileIdentity::operator==(const FileIdentity& other) const
{
    return device == other.device && IsSameOnSomeDevice(other);
}

bool FileIdentity::IsSameOnSomeDevice(const FileIdentity& other) const
{
    return inode == other.inode && size == other.size && modified.tv_sec == other.modified.tv_sec &&
           modified.tv_nsec == other.modified.tv_nsec;
}

bool FileIdentity::HasSettled() const
{
    constexpr time_t kSeconds = 2;
    timespec now;
    ::clock_gettime(CLOCK_REALTIME, &now);
    // A time far enough in the future counts as well: a change would set another time.
    return modified.tv_sec < now.tv_sec - kSeconds || modified.tv_sec > now.tv_sec + kSeconds;
}

bool IsStillAt(int file, const std::string& path)
{
    struct stat held;
    struct stat named;
    return ::fstat(file, &held) == 0 && ::lstat(path.c_str(), &named) == 0 && held.st_dev == named.st_dev &&
           held.st_ino == named.st_ino;
}

} // namespace base
