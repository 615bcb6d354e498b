// Makes a tags file from the index of its project, so that only changed sources are parsed.
#pragma once

#include "wren/core/TagsRun.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace wren {

class Interruption;

// What a run of the tags program would do for DIRECTORY/tags.
struct TagsWanted {
    std::string directory;             // absolute
    std::vector<std::string> patterns; // of file names: "*.h"
};

// Updates the index and writes the file, which is the same, byte by byte, as the tags program makes. Nullopt, with
// nothing changed but the index, if there is no index yet, if it covers too few of the sources, or if there is any
// obstacle: the tags program then does the work, and reports what is in its way. Blocks; a signal interrupts it.
std::optional<TagsOutcome> MakeTagsFromIndex(const TagsWanted& wanted, Interruption& interruption,
                                             const std::function<void(const std::string&)>& waits);

} // namespace wren
