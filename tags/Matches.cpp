#include "tags/Matches.h"

#include "tags/Tags.h"
#include "tagsfile/Kinds.h"

namespace {

bool Accepts(WantedTags wanted, char kind)
{
    return wanted == WantedTags::Any || (wanted == WantedTags::Definitions) == tagsfile::KindOf(kind).isDefinition;
}

} // namespace

std::vector<TagData> CollectMatches(Tags& tags, WantedTags wanted)
{
    std::vector<TagData> matches;
    if (!tags.Rewind())
        return matches;
    TagData match;
    // The files are sorted by name, so the first other name after a match ends the search. Matches of an unwanted kind
    // do not count: all names behind them are read.
    while (tags.NextMatch(match.name, match.qualifier, match.kind, match.file, match.line, match.fromSystemTags,
                          !matches.empty(), TagFile::ExactMatch())) {
        if (!Accepts(wanted, match.kind))
            continue;
        matches.push_back(match);
        if (matches.size() == kMostMatches)
            break;
    }
    tags.Done();
    return matches;
}
