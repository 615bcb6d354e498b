// What the call at a place takes.
#pragma once

#include "base/CancelToken.h"
#include "resolve/ParsedText.h"
#include "resolve/Resolver.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace wren {

struct CallHelp {
    struct Overload {
        std::string label;                                 // "int f(int a, int b)"
        std::vector<std::pair<size_t, size_t>> parameters; // begin and end in the label, bytes
        bool isVariadic = false;
    };
    std::vector<Overload> overloads; // at least one
    size_t active = 0;               // the first that takes as many arguments as are written
    size_t parameter = 0;            // of that one; the number of its parameters when there are fewer than arguments
    size_t name = 0;                 // where the name of what is called begins, bytes
};

struct CallQuestion { // borrows all of it
    const resolve::Resolver& resolver;
    const symbols::Snapshot& snapshot;
    const resolve::ParsedText& parsed;
    const resolve::Place& place;
    const base::CancelToken* cancel = nullptr;
};

// Nullopt when nothing is called at the place, or nothing is known about it.
std::optional<CallHelp> CallHelpAt(const CallQuestion& question);

} // namespace wren
