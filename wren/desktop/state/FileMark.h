// What a file held at some time, to tell whether it holds something else now.
#pragma once

#include "wren/core/TextFile.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace wren {

// Texts are compared, up to kLargestCompared: a file that was only touched, or written again with the same text, has
// not changed. Larger ones are told by their stamps. Can be kept for another process.
struct FileMark {
    static constexpr std::int64_t kLargestCompared = 16 * 1024 * 1024; // bytes

    FileStamp stamp;     // at first, of a file that is not there
    std::string content; // a digest of the text; "" when it is too large

    bool operator==(const FileMark&) const = default;
};

// Of a file with that text. A stamp from before it was read is no newer than the text.
FileMark MarkOf(const FileStamp& stamp, std::string_view text);

// A file that has come or gone since has changed too.
bool HasChanged(const std::string& path, const FileMark& mark);

// As in FileMark. Nothing when the file is too large, cannot be read, or is not of that stamp.
std::string DigestOf(const std::string& path, const FileStamp& stamp);

} // namespace wren
