#include "wren/cli/DirectoryLock.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace wren {

// A lock that cannot be had, on a file system without any, is done without.
DirectoryLock::DirectoryLock(const std::string& path)
    : directory(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (directory < 0 || ::flock(directory, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
        return;
    std::fprintf(stderr, "wren: tags are being made in %s already; waiting\n", path.c_str());
    while (::flock(directory, LOCK_EX) != 0 && errno == EINTR)
        continue;
}

DirectoryLock::~DirectoryLock()
{
    if (directory >= 0)
        ::close(directory);
}

} // namespace wren
