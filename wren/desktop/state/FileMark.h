// The state of a file at some time, to find out whether it has changed since.
#pragma once

#include "base/FileIdentity.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace wren {

// Texts are compared, up to kLargestCompared: a file that was only touched, or written again with the same text, has
// not changed. Larger files are compared by their stamps. A mark can be kept for another process.
struct FileMark {
    static constexpr std::int64_t kLargestCompared = 16 * 1024 * 1024; // bytes

    std::optional<base::FileIdentity> stamp; // by default nothing: of a file that does not exist
    std::string content;                     // a digest of the text; "" when it is too large

    bool operator==(const FileMark&) const = default;
};

// The mark of a file with that text. Take the stamp before reading: then it is not newer than the text.
FileMark MarkOf(const std::optional<base::FileIdentity>& stamp, std::string_view text);

// A file that was created or removed since has changed too.
bool HasChanged(const std::string& path, const FileMark& mark);

// The digest as in FileMark; "" when the file is too large, cannot be read, or has another stamp.
std::string DigestOf(const std::string& path, const std::optional<base::FileIdentity>& stamp);

} // namespace wren
