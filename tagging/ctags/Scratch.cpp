#include "tagging/ctags/Scratch.h"

#include <sys/stat.h>
#include <unistd.h>

namespace tagging {

namespace {

constexpr unsigned long long kRoom = 64ull * 1024 * 1024;
constexpr unsigned long long kFiles = 1024; // at most three at a time for each of the 64 jobs

// Ours alone: other users may write to the directory around it.
bool IsOurs(const std::string& directory)
{
    struct stat status;
    return ::lstat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
           (status.st_mode & 077) == 0;
}

// File systems without a limit for files report 0.
bool HasRoom(const SharedMemory& memory)
{
    struct statvfs status;
    return memory.room(memory.directory.c_str(), &status) == 0 && status.f_bavail * status.f_frsize >= kRoom &&
           (status.f_files == 0 || status.f_favail >= kFiles);
}

} // namespace

Scratch::Scratch(const std::string& otherPlace, const SharedMemory& memory) : directory(otherPlace)
{
    inMemory = memory.directory + "/cplustags-" + std::to_string(::geteuid());
    if (IsOurs(inMemory))
        base::RemoveAbandonedIn(inMemory); // old files may be what fills the memory
    if (!HasRoom(memory))
        return;
    ::mkdir(inMemory.c_str(), 0700);
    if (!IsOurs(inMemory))
        return;
    place = std::make_unique<base::WorkingDirectory>(inMemory, "tags");
    if (place->Error().empty())
        directory = place->Path();
}

Scratch::~Scratch()
{
    place.reset();
    if (IsOurs(inMemory))
        ::rmdir(inMemory.c_str()); // fails if another run uses it
}

} // namespace tagging
