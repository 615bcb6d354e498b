// Writes a tags file: what it says of itself, then the tags.
#pragma once

#include "tagsfile/LineSource.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cplustags {

using LineSources = std::vector<std::unique_ptr<tagsfile::LineSource>>;

class NewFile;

struct TagsCount {
    size_t files = 0; // that were tagged, and others that old tags are of
    size_t tags = 0;
};

using WriteText = std::function<bool(std::string_view)>;

// The lines in front of the tags, sorted as all lines are. "!_TAG_CPLUSTAGS_FILES" and "!_TAG_CPLUSTAGS_TAGS" have the
// counts.
std::string PseudoTags(const TagsCount& count);

// Writes pseudo-tags and lines with 'write', until that says false. False when it did, or when the number of lines is
// not the count's: then a source has changed since it was counted.
bool WriteTags(const TagsCount& count, LineSources lines, const WriteText& write);

// The same into a file, which then says of itself that its names are in order, so that readers need not look at all of
// it: see SortedClaim. It claims nothing where a name is out of order after all. The file is still to be put in place.
bool WriteTags(const TagsCount& count, LineSources lines, const WriteText& write, NewFile& file);

} // namespace cplustags
