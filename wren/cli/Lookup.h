// One lookup, from the question to the matches, through the plug-in as an editor would ask it.
#pragma once

#include "wren/cli/AskedEditor.h"
#include "wren/cli/LookupFace.h"
#include "wren/text/Place.h"

#include <optional>
#include <string>
#include <vector>

namespace wren {

enum class LookupKind { Any, Declaration, Definition };

struct LookupOptions {
    std::optional<Place> place;        // either this
    std::optional<std::string> symbol; // or this, in 'directory'
    std::string directory;             // absolute or not; "" for the current one
    LookupKind kind = LookupKind::Any;
    EditorOptions editor;
};

struct LookupResult {
    enum class Outcome { Matches, NoMatch, NothingThere, NoTags, Unusable };

    Outcome outcome = Outcome::Unusable;
    std::vector<Match> matches; // in the list's order
    std::string directory;      // whose tags files were asked
    std::string error;          // for Unusable: what could not be used, and why
};

// A list of matches ends here, whatever else the tags files hold.
constexpr size_t kMostMatches = 41;

// Makes the application and its display, so once in a process. Standard output is not written to.
LookupResult LookUp(const LookupOptions& options);

} // namespace wren
