// The tags that match what a tag set was made for, in the order of its files.
#pragma once

#include "tags/TagData.h"

#include <vector>

class Tags;

// A definition has a body. All other tags are declarations, also a class or a macro at its only place.
enum class WantedTags { Any, Declarations, Definitions };

// A search ends here, whatever else the tags files hold. The last match only shows that there are too many.
inline constexpr size_t kMostMatches = 41;

// The matches whose names are exactly the pattern's, at most kMostMatches; none when neither file can be opened. Closes
// the files. Any thread.
std::vector<TagData> CollectMatches(Tags& tags, WantedTags wanted);
