// Names that fit a place in a text.
#pragma once

#include "resolve/ParsedText.h"
#include "resolve/Resolver.h"
#include "symbols/Workspace.h"
#include "wren/symbols/TextPlace.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace wren {

struct FittingName { // borrows what it shows
    enum class Sort { Symbol, Keyword, File };
    Sort sort = Sort::Symbol;
    std::string_view name;
    const tagging::Symbol* symbol = nullptr; // null for a keyword and a file
    std::string_view path;                   // of the symbol's file, as in the index
};

struct FittingQuestion { // borrows all
    const resolve::Resolver& resolver;
    symbols::Workspace& workspace;
    const resolve::ParsedText& parsed;
    resolve::Place place;
    TextPlace where; // as PlaceIn() has it for the place
    symbols::Limits limits;
};

// Nearest first, each name once: what begins with the typed letters, then keywords, then what only has them in it.
// Members that are closed at the place come behind the others. Nothing in comments and strings. Returns whether there
// are more.
bool ForEachFittingName(const FittingQuestion& question, const std::function<void(const FittingName&)>& sink);

} // namespace wren
