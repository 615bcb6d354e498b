#include "tagging/FileReader.h"

#include "base/Descriptor.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tagging {

namespace {

constexpr size_t kLargestText = 64 * 1024 * 1024;

} // namespace

FileStamp FileStamp::Of(const struct stat& status)
{
    constexpr std::int64_t kSecond = 1'000'000'000;
    return {static_cast<std::uint64_t>(status.st_size), status.st_mtim.tv_sec * kSecond + status.st_mtim.tv_nsec,
            static_cast<std::uint64_t>(status.st_ino)};
}

bool FileReader::Read(const std::string& path)
{
    text = {};
    // The file may have become a pipe since the list was read.
    const base::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status;
    if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode) ||
        static_cast<size_t>(status.st_size) > kLargestText)
        return false;
    stamp = FileStamp::Of(status);
    if (capacity < stamp.size) {
        capacity = std::max(static_cast<size_t>(stamp.size), 2 * capacity);
        buffer.reset(new char[capacity]); // make_unique would clear it
    }
    size_t size = 0;
    while (size < stamp.size) {
        const ssize_t count = ::read(file.Number(), buffer.get() + size, stamp.size - size);
        if (count <= 0)
            break;
        size += static_cast<size_t>(count);
    }
    text = std::string_view(buffer.get(), size);
    changedMeanwhile = ::fstat(file.Number(), &status) != 0 || FileStamp::Of(status) != stamp;
    return true;
}

std::unique_ptr<char[]> FileReader::TakeBuffer()
{
    capacity = 0;
    return std::move(buffer);
}

} // namespace tagging
