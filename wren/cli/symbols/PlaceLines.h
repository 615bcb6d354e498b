// The answers to a question about a place, ready to be printed.
#pragma once

#include "resolve/Resolver.h"
#include "symbols/Workspace.h"

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace wren {

struct PlaceLine {
    std::string path; // absolute
    unsigned line = 0;
    unsigned column = 0;             // in bytes, from 1
    std::string source;              // the line's text; "" when the file cannot be read
    nlohmann::ordered_json describe; // without what is above
};

struct PlaceLines {
    std::vector<PlaceLine> found;
    bool more = false; // than the limit
    std::string name;  // what was asked for; "" for nothing
};

// Read the lines of the sources.
PlaceLines LinesOf(const resolve::Answers& answers, const symbols::Workspace& workspace);
PlaceLines LinesOf(const resolve::Uses& uses, const symbols::Workspace& workspace);
PlaceLines ReferencesOf(const std::string& name, symbols::Workspace& workspace, symbols::Limits limits);

// All that a program may want to know of it.
nlohmann::ordered_json JsonOf(const PlaceLine& line);

} // namespace wren
