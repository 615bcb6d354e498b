#include "symbols/update/DirectoryReader.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace symbols {

namespace {

using Kind = DirectoryReader::Kind;

std::optional<Kind> KindOfMode(mode_t mode)
{
    if (S_ISREG(mode))
        return Kind::File;
    if (S_ISLNK(mode))
        return Kind::Link;
    return S_ISDIR(mode) ? std::optional(Kind::Directory) : std::nullopt;
}

// Some file systems do not say what an entry is.
std::optional<Kind> KindOf(int directory, const dirent64& entry)
{
    if (entry.d_type != DT_UNKNOWN)
        return KindOfMode(DTTOIF(entry.d_type));
    struct stat status;
    if (::fstatat(directory, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    return KindOfMode(status.st_mode);
}

} // namespace

DirectoryReader::DirectoryReader(const std::string& path, bool followsLink)
    : directory(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC | (followsLink ? 0 : O_NOFOLLOW)))
{
    std::vector<std::pair<size_t, Kind>> starts;
    if (!directory.IsOpen() || !ReadNames(starts))
        problem = errno;
    entries.reserve(starts.size());
    for (const auto& [start, kind] : starts)
        entries.push_back({names.c_str() + start, kind});
}

// readdir() would allocate a buffer and a lock for each directory.
bool DirectoryReader::ReadNames(std::vector<std::pair<size_t, Kind>>& starts)
{
    alignas(dirent64) char buffer[32768];
    for (;;) {
        const long length = ::syscall(SYS_getdents64, directory.Number(), buffer, sizeof buffer);
        if (length <= 0)
            return length == 0;
        for (long at = 0; at < length;) {
            const auto& entry = *reinterpret_cast<const dirent64*>(buffer + at);
            at += entry.d_reclen;
            const std::string_view name = entry.d_name;
            if (name == "." || name == "..")
                continue;
            if (const std::optional<Kind> kind = KindOf(directory.Number(), entry)) {
                starts.emplace_back(names.size(), *kind);
                names.append(name).push_back('\0');
            }
        }
    }
}

} // namespace symbols
