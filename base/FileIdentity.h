// Which file it is, and which state of it.
#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>

namespace base {

// Tells a file from all others, and from what it was before a change: as long as this is the same, so is the content.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    off_t size = 0;         // bytes
    timespec modified = {}; // to the nanosecond

    static FileIdentity Of(const struct stat& status);

    // Nothing when there is no file. The last one is of plain files only.
    static std::optional<FileIdentity> At(const std::string& path);       // links followed
    static std::optional<FileIdentity> AtItself(const std::string& path); // a link's own
    static std::optional<FileIdentity> OfPlainFile(int descriptor);

    bool operator==(const FileIdentity& other) const;

    // The same for one from before a restart of the machine, which may give a device another number.
    bool IsSameOnSomeDevice(const FileIdentity& other) const;

    // False for about two seconds from a change on: another one could leave size and time as they are, since times are
    // not as fine as they look.
    bool HasSettled() const;
};

// Whether the path, and not a link there, still names the open file.
bool IsStillAt(int file, const std::string& path);

} // namespace base
