// Whether the leaf names of some matches' files tell the files apart.
#pragma once

#include "windows/TagData.h"

#include <vector>

// An order of references by leaf name, byte by byte; those without a name come last.
bool MatchEntryName(const EntryRef* a, const EntryRef* b);

// True when two different files among the matches have the same leaf name.
bool FileNamesAreAmbiguous(const std::vector<TagData>& matches);
