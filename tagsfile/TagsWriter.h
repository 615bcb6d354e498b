// Writes a tags file: what it says of itself, then the tags.
#pragma once

#include "tagsfile/LineSource.h"

#include <cstddef>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace tagsfile {

using LineSources = std::vector<std::unique_ptr<LineSource>>;

struct TagsCount {
    size_t files = 0; // that were tagged, and others that old tags are of
    size_t tags = 0;
};

using WriteText = std::function<bool(std::string_view)>;

// A file that is being written. Its beginning is filled in once its end is known.
struct RewritableFile {
    WriteText write;
    std::function<bool(off_t place, std::string_view text)> writeOver; // what has been written already
    std::function<void(const timespec& modified)> setTime;
};

// Writes pseudo-tags and lines with 'write', until that says false. False when it did, or when the number of lines is
// not the count's: then a source has changed since it was counted. 'version' is that of the tags program.
bool WriteTags(const TagsCount& count, const std::string& version, LineSources lines, const WriteText& write);

// The same into a file, which then says of itself that its names are in order, so that readers need not look at all of
// it: see SortedClaim. It claims nothing where a name is out of order after all.
bool WriteTags(const TagsCount& count, const std::string& version, LineSources lines, const RewritableFile& file);

} // namespace tagsfile
