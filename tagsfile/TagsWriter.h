// Writes a tags file: its pseudo-tags, then the tags.
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
    size_t files = 0; // tagged files, and others with old tags
    size_t tags = 0;
};

using WriteText = std::function<bool(std::string_view)>;

// A file being written, whose beginning is filled in at the end.
struct RewritableFile {
    WriteText write;
    std::function<bool(off_t place, std::string_view text)> writeOver; // replaces text that was written before
    std::function<void(const timespec& modified)> setTime;
};

// Writes pseudo-tags and lines with 'write' until that returns false. False if it did, or if the number of lines
// differs from the count: then a source changed after it was counted. 'version' is that of the tags program.
bool WriteTags(const TagsCount& count, const std::string& version, LineSources lines, const WriteText& write);

// The same into a file. The file then claims that its names are in order, so that readers need not read all of it (see
// SortedClaim). It makes no claim if any name is out of order.
bool WriteTags(const TagsCount& count, const std::string& version, LineSources lines, const RewritableFile& file);

} // namespace tagsfile
