// A place of a source that answers a question, as lists show it.
#pragma once

#include "tagging/ParsedSource.h"

#include <cstddef>
#include <string>
#include <vector>

namespace wren {

struct FoundPlace {
    std::string path;     // absolute
    long line = 0;        // from 1; 0 for a whole file
    long column = 0;      // bytes, from 1
    std::string name;     // for people: "Outer::name(int a)"
    std::string shown;    // the path for people: relative to the root
    std::string source;   // the line, without blanks at its ends; "" when it cannot be read
    size_t nameStart = 0; // of the name in 'source', bytes
    size_t nameSize = 0;
    tagging::SymbolKind kind = tagging::SymbolKind::None;
};

struct FoundPlaces {
    std::string name; // what was asked for; "" for nothing
    std::vector<FoundPlace> found;
    bool more = false;           // than the limit
    bool isSure = false;         // found by meaning, and not by the name alone
    bool isOnlyDeclared = false; // a definition was wanted, and nothing known is one
};

} // namespace wren
