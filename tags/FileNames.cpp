#include "tags/FileNames.h"

#include <algorithm>
#include <cstring>

namespace {

bool SameName(const EntryRef* a, const EntryRef* b)
{
    if (a->name == nullptr || b->name == nullptr)
        return a->name == b->name;
    return std::strcmp(a->name, b->name) == 0;
}

} // namespace

bool MatchEntryName(const EntryRef* a, const EntryRef* b)
{
    if (a->name == nullptr)
        return false;
    return b->name == nullptr || std::strcmp(a->name, b->name) < 0;
}

bool FileNamesAreAmbiguous(const std::vector<TagData>& matches)
{
    std::vector<const EntryRef*> files;
    files.reserve(matches.size());
    for (const TagData& match : matches)
        files.push_back(&match.file);
    std::sort(files.begin(), files.end(), MatchEntryName);
    const auto sameNameElsewhere = [](const EntryRef* a, const EntryRef* b) { return SameName(a, b) && *a != *b; };
    return std::adjacent_find(files.begin(), files.end(), sameNameElsewhere) != files.end();
}
