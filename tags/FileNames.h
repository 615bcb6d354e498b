// Checks whether the leaf names of matches' files are unique.
#pragma once

#include "tags/TagData.h"

#include <vector>

// Orders references by leaf name, byte by byte; those without a name come last.
bool MatchEntryName(const EntryRef* a, const EntryRef* b);

// True when two different files of the matches have the same leaf name.
bool FileNamesAreAmbiguous(const std::vector<TagData>& matches);
