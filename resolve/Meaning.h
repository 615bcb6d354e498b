// One thing that a name may mean.
#pragma once

#include "resolve/How.h"
#include "resolve/Type.h"

#include <string>
#include <vector>

namespace resolve {

struct Meaning {
    symbols::Symbol symbol;
    How how = How::Name;
    int level = 0;           // of its scope: 0 is the innermost; kUnreachable for one that the place does not see
    size_t entity = 0;       // the same for the declarations and definitions of one thing; set by RankMeanings
    bool isUnlikely = false; // another sort of thing, another number of arguments, not visible; also set there
    Bindings bindings;       // of the class that it is a member of
    std::string reason;
};

using MeaningList = std::vector<Meaning>;

inline constexpr int kUnreachable = 1000;

} // namespace resolve
