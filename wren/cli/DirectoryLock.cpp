#include "wren/cli/DirectoryLock.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wren {

namespace {

// Whoever had the lock before removes the file at the end, so that what has been locked may be no longer the one at the path.
bool IsStillAt(const std::string& path, int file)
{
    struct stat held;
    struct stat named;
    return ::fstat(file, &held) == 0 && ::stat(path.c_str(), &named) == 0 && held.st_dev == named.st_dev &&
           held.st_ino == named.st_ino;
}

} // namespace

// A lock that cannot be had, on a file system without any, is done without.
DirectoryLock::DirectoryLock(const std::string& directory) : path(directory + "/.tags.lock")
{
    while (true) {
        file = ::open(path.c_str(), O_RDONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (file < 0)
            return;
        if (::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            std::fprintf(stderr, "wren: tags are being made in %s already; waiting\n", directory.c_str());
            while (::flock(file, LOCK_EX) != 0 && errno == EINTR)
                continue;
        }
        if (IsStillAt(path, file))
            return;
        ::close(file);
    }
}

DirectoryLock::~DirectoryLock()
{
    if (file < 0)
        return;
    ::unlink(path.c_str());
    ::close(file);
}

} // namespace wren
