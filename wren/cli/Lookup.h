// One lookup, from the request to the matches.
#pragma once

#include "tags/Matches.h"
#include "wren/cli/ServingTags.h"
#include "wren/text/Place.h"

#include <optional>
#include <string>
#include <vector>

namespace wren {

struct LookupOptions {
    std::optional<Place> place;        // either this
    std::optional<std::string> symbol; // or this, in 'directory'
    std::string directory;             // absolute or not; "" for the current one
    WantedTags wanted = WantedTags::Any;
    TagsOptions tags;
};

struct Match {
    std::string path;
    long line = 0;    // for an editor to open; tags may hold any number, below 1 is the first line
    std::string item; // as in an editor's list of matches
};

struct LookupResult {
    enum class Outcome { Matches, NoMatch, NothingThere, NoTags, Unusable };

    Outcome outcome = Outcome::Unusable;
    std::vector<Match> matches; // in the list's order, at most kMostMatches
    std::string directory;      // whose tags files were searched
    std::string error;          // for Unusable: the cause
};

// Writes to standard output only when there is no home directory.
LookupResult LookUp(const LookupOptions& options);

} // namespace wren
