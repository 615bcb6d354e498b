// The old tags that stay in a tags file when others are appended.
#pragma once

#include "cplustags/Place.h"
#include "tagsfile/TagsWriter.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>

namespace cplustags {

// Tags of files that still exist and have not been tagged again. Operations throw Failure when the old file cannot be
// read. Not thread-safe.
class StayingTags {
public:
    // 'tagged' are the file fields that have been tagged again. 'place' must outlive it.
    StayingTags(const Place& place, std::unordered_set<std::string> tagged);

    tagsfile::TagsCount Count();
    std::unique_ptr<tagsfile::LineSource> Lines(); // it must outlive them

private:
    bool Goes(std::string_view field);

    const Place& place;
    const std::unordered_set<std::string> tagged;
    size_t files = 0; // files with lines among those read so far
};

} // namespace cplustags
