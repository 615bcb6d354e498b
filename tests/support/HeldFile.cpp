#include "tests/support/HeldFile.h"

#include "base/PlainFile.h"

#include <fcntl.h>
#include <mutex>
#include <set>
#include <sys/stat.h>

namespace {

std::mutex gMutex;
std::set<std::string> gHeld; // paths, since inode numbers are reused

bool IsHeld(const char* path)
{
    struct stat status;
    if (::stat(path, &status) != 0 || !S_ISFIFO(status.st_mode))
        return false;
    const std::lock_guard guard(gMutex);
    return gHeld.contains(path);
}

int Open(const char* path)
{
    return IsHeld(path) ? ::open(path, O_RDONLY | O_CLOEXEC) : base::OpenPlainFileOnDisk(path);
}

} // namespace

bool MakeHeldFile(const std::string& path)
{
    base::SetPlainFileOpener(Open);
    if (::mkfifo(path.c_str(), 0600) != 0)
        return false;
    const std::lock_guard guard(gMutex);
    gHeld.insert(path);
    return true;
}
