#include "tests/support/HeldFile.h"

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

} // namespace

bool MakeHeldFile(const std::string& path)
{
    if (::mkfifo(path.c_str(), 0600) != 0)
        return false;
    const std::lock_guard guard(gMutex);
    gHeld.insert(path);
    return true;
}

// The linker wraps base::OpenPlainFile() in the program's own code with these names.
extern "C" int __real__ZN4base13OpenPlainFileEPKc(const char* path);

extern "C" int __wrap__ZN4base13OpenPlainFileEPKc(const char* path)
{
    return IsHeld(path) ? ::open(path, O_RDONLY | O_CLOEXEC) : __real__ZN4base13OpenPlainFileEPKc(path);
}
