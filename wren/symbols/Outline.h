// The symbols of a file as a tree.
#pragma once

#include "tagging/ParsedSource.h"

#include <cstddef>
#include <vector>

namespace wren {

struct OutlineNode {
    const tagging::Symbol* symbol = nullptr;
    std::vector<OutlineNode> children; // in the order of the source
};

// 'symbols' are by line, and must outlive the result. A symbol stands in the innermost one that has the name of its
// scope and spans its line; the definition of a member outside of its class stands at the top.
std::vector<OutlineNode> OutlineOf(const std::vector<tagging::Symbol>& symbols);

} // namespace wren
