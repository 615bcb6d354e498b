#include "symbols/store/FileBytes.h"

#include "base/Descriptor.h"
#include "base/PlainFile.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace symbols {

namespace {

constexpr std::uint64_t kSmall = 256 * 1024;

} // namespace

base::Result<std::string> ReadWhole(int file, size_t size)
{
    std::string content(size, '\0');
    for (size_t at = 0; at < size;) {
        const ssize_t count = ::pread(file, content.data() + at, size - at, static_cast<off_t>(at));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return base::SystemError("cannot read");
        if (count == 0)
            return base::Error{"cannot read", EIO};
        at += static_cast<size_t>(count);
    }
    return content;
}

// A mapped file that became shorter would end the program (SIGBUS). Nothing but an index's own writers touches its
// files, and they only make new ones and unlink old ones.
base::Result<FileBytes> FileBytes::Open(const std::string& path, std::uint64_t size)
{
    const base::Descriptor file(base::OpenPlainFile(path.c_str()));
    struct stat status = {};
    if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0)
        return base::SystemError("cannot open " + path);
    if (static_cast<std::uint64_t>(status.st_size) != size)
        return base::Error{path + " has another size than it was written with"};
    if (size <= kSmall) {
        base::Result<std::string> content = ReadWhole(file.Number(), size);
        if (!content)
            return content.Failure();
        return FileBytes(std::move(*content));
    }
    void* const place = ::mmap(nullptr, size, PROT_READ, MAP_SHARED, file.Number(), 0);
    if (place == MAP_FAILED)
        return base::SystemError("cannot map " + path);
    FileBytes bytes{std::string()};
    bytes.mapped = {static_cast<const char*>(place), size};
    return bytes;
}

FileBytes::FileBytes(FileBytes&& other) noexcept
    : content(std::move(other.content)), mapped(std::exchange(other.mapped, {}))
{
}

FileBytes::~FileBytes()
{
    if (!mapped.empty())
        ::munmap(const_cast<char*>(mapped.data()), mapped.size());
}

} // namespace symbols
