// Identifies a file and its version.
#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>

namespace base {

// Equal identities mean the same file with the same content.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    off_t size = 0;         // bytes
    timespec modified = {}; // to the nanosecond

    static FileIdentity Of(const struct stat& status);

    // Nullopt when there is no file. OfPlainFile() accepts regular files only.
    static std::optional<FileIdentity> At(const std::string& path); // follows links
    static std::optional<FileIdentity> OfPlainFile(int descriptor);

    bool operator==(const FileIdentity& other) const;

    // Also equal for an identity from before a restart of the machine, which may renumber devices.
    bool IsSameOnSomeDevice(const FileIdentity& other) const;

    // False for about two seconds after a change: another change could leave size and time the same, since times are
    // coarser than they look.
    bool HasSettled() const;
};

// Whether the path, itself not a link, still names the open file.
bool IsStillAt(int file, const std::string& path);

} // namespace base
