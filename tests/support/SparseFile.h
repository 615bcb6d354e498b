// Files much longer than their content.
#pragma once

#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

constexpr off_t kGigabyte = off_t(1) << 30;
constexpr off_t kTerabyte = off_t(1) << 40;

// Lengthens the file by a hole, to 'size' bytes. Returns the reason for a failure, to skip a test; "" on success.
inline std::string MakeSparse(const std::string& path, off_t size)
{
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    struct stat status = {};
    const bool isLong = file >= 0 && ::ftruncate(file, size) == 0 && ::fstat(file, &status) == 0;
    const off_t hole = isLong ? ::lseek(file, 0, SEEK_HOLE) : -1;
    ::close(file);
    if (!isLong)
        return "the file system takes no file of " + std::to_string(size) + " bytes";
    if (hole < 0 || hole == size || status.st_blocks > size / 1024)
        return "the file system has no sparse files, or does not say where their holes are";
    return "";
}
