#include "cplustags/Scratch.h"

#include "cplustags/NewFile.h"

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace cplustags {

namespace {

constexpr const char* kMemory = "/dev/shm";
constexpr unsigned long long kRoom = 64ull * 1024 * 1024;

// Of nobody else: others may write to the directory around it.
bool IsOurs(const std::string& directory)
{
    struct stat status;
    return ::lstat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
           (status.st_mode & 077) == 0;
}

bool HasRoom(const char* directory)
{
    struct statvfs status;
    return ::statvfs(directory, &status) == 0 && status.f_bavail * status.f_frsize >= kRoom;
}

} // namespace

Scratch::Scratch(const std::string& otherPlace) : directory(otherPlace)
{
    if (!HasRoom(kMemory))
        return;
    inMemory = kMemory + ("/cplustags-" + std::to_string(::geteuid()));
    ::mkdir(inMemory.c_str(), 0700);
    if (!IsOurs(inMemory)) {
        inMemory.clear();
        return;
    }
    place = std::make_unique<NewFile>(inMemory + "/tags");
    if (place->Error().empty())
        directory = place->Directory();
}

Scratch::~Scratch()
{
    place.reset();
    if (!inMemory.empty())
        ::rmdir(inMemory.c_str()); // unless another run is using it
}

} // namespace cplustags
