// Parts of names and paths.
#pragma once

#include <string_view>
#include <vector>

namespace symbols {

std::string_view LeafOf(std::string_view path); // after the last "/"

// "c" of "a::b<int>::c<x::y>".
std::string_view LastPart(std::string_view qualified);

// The last part of each base in "Base<T,U>,n::Other".
std::vector<std::string_view> BaseNames(std::string_view bases);

} // namespace symbols
