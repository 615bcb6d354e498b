// The names in a list of bases.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wren {

// The names in a symbol's list of bases, without template arguments: "a::Base", "Other" of "a::Base<x, y>,Other".
std::vector<std::string> BaseNames(std::string_view bases);

} // namespace wren
