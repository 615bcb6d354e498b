#include "wren/desktop/symbols/ParentScopes.h"

#include <cstddef>
#include <string>

namespace wren {

namespace {

std::string Qualified(const PaletteItem& item)
{
    return item.detail.empty() ? item.name : item.detail + "::" + item.name;
}

} // namespace

std::vector<bool> BelowTheirScopes(const std::vector<PaletteItem>& items)
{
    std::vector<bool> below;
    std::vector<std::string> parents; // of the next row, by depth
    for (const PaletteItem& item : items) {
        const auto depth = static_cast<size_t>(item.depth);
        below.push_back(depth > 0 && depth <= parents.size() && parents[depth - 1] == item.detail);
        parents.resize(depth);
        parents.push_back(Qualified(item));
    }
    return below;
}

} // namespace wren
