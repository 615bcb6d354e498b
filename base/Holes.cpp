#include "base/Holes.h"

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool AreMost(off_t bytes, off_t size)
{
    return bytes > base::kManyBytes && bytes > size / 2;
}

// Adds up holes until they are most of the file, or until the data leaves no room for that.
bool FindMostHoles(int descriptor, off_t size)
{
    off_t holes = 0;
    off_t place = 0;
    while (place < size && AreMost(holes + (size - place), size)) {
        const off_t data = ::lseek(descriptor, place, SEEK_DATA);
        const off_t holeEnd = data < 0 ? size : std::min(data, size); // no more data, or holes are not supported
        if (data < 0 && ::lseek(descriptor, place, SEEK_HOLE) != place)
            return false;
        holes += holeEnd - place;
        if (AreMost(holes, size))
            return true;
        place = ::lseek(descriptor, holeEnd, SEEK_HOLE);
        if (place < 0)
            return false;
    }
    return false;
}

} // namespace

bool base::IsMostlyHoles(int descriptor)
{
    constexpr off_t kBlock = 512; // the unit of st_blocks on every file system
    struct stat status;
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    // Space missing on the disk is holes, compression, or data that was not allocated yet.
    if (!AreMost(status.st_size - status.st_blocks * kBlock, status.st_size))
        return false;
    const off_t before = ::lseek(descriptor, 0, SEEK_CUR);
    const bool found = FindMostHoles(descriptor, status.st_size);
    ::lseek(descriptor, before, SEEK_SET);
    return found;
}
