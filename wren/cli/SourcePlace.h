// The place in a source file that a command asks about.
#pragma once

#include "vetch/storage/BEntry.h"
#include "wren/text/Place.h"

#include <optional>
#include <string>

namespace wren {

struct SourcePlace {
    std::string text; // of the whole file
    long offset = 0;
    BEntry directory;           // where the search for tags files starts; links are resolved
    std::string shownDirectory; // of the file under its given name
};

// nullopt, with the reason in '*error', when the file cannot be read or ends before the place.
std::optional<SourcePlace> ReadSource(const Place& place, WithoutColumn withoutColumn, std::string* error);

} // namespace wren
