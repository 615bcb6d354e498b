// The tags of earlier runs that stay in a file when others are added to it.
#pragma once

#include "cplustags/Place.h"
#include "tagsfile/TagsWriter.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>

namespace cplustags {

// Those of files that are still there and have not been tagged again. Operations throw Failure when the old file cannot
// be read. Not thread-safe.
class StayingTags {
public:
    // 'tagged' are the fields of the files that have been tagged again. 'place' must outlive it.
    StayingTags(const Place& place, std::unordered_set<std::string> tagged);

    tagsfile::TagsCount Count();
    std::unique_ptr<tagsfile::LineSource> Lines(); // which it must outlive

private:
    bool Goes(std::string_view field);

    const Place& place;
    const std::unordered_set<std::string> tagged;
    size_t files = 0; // that the lines read so far are of
};

} // namespace cplustags
