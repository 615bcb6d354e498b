// One lookup, from the question to the matches.
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
    long line = 0;    // that an editor goes to: tags may name any number, and one below 1 is the first line
    std::string item; // as an editor's list of matches shows it
};

struct LookupResult {
    enum class Outcome { Matches, NoMatch, NothingThere, NoTags, Unusable };

    Outcome outcome = Outcome::Unusable;
    std::vector<Match> matches; // in the list's order, at most kMostMatches
    std::string directory;      // whose tags files were asked
    std::string error;          // for Unusable: what could not be used, and why
};

// Standard output is written to only when there is no home directory.
LookupResult LookUp(const LookupOptions& options);

} // namespace wren
