// From a source to its header, and back.
#pragma once

#include "symbols/store/Snapshot.h"

#include <functional>
#include <optional>
#include <string>

namespace wren {

struct OneHalf {
    std::string path; // as in the index
    const symbols::Snapshot& snapshot;
    const base::CancelToken& cancel;
    std::function<bool(const std::string& pathInIndex)> exists;
};

// The path in the index of the other half: the file of the same name beside it; else the nearest one of the project
// with that name; else the one that declares most of what this one defines, or the reverse. Absent when there is none.
std::optional<std::string> OtherHalfOf(const OneHalf& half);

} // namespace wren
