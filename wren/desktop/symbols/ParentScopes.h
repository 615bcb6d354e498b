// Which rows of an outline stand below the row of their scope.
#pragma once

#include "wren/desktop/symbols/PaletteItem.h"

#include <vector>

namespace wren {

// One for each item: whether the row that it is indented below names its scope, so that the row need not repeat it.
std::vector<bool> BelowTheirScopes(const std::vector<PaletteItem>& items);

} // namespace wren
