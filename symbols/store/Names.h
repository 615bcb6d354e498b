// Parts of names and paths.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace symbols {

std::string_view LeafOf(std::string_view path); // after the last "/"

// "c" of "a::b<int>::c<x::y>".
std::string_view LastPart(std::string_view qualified);

// The last part of each base in "Base<T,U>,n::Other".
std::vector<std::string_view> BaseNames(std::string_view bases);

// A bit for each sort of letter in the text, without regard to case: a to z, digits, "_" and others.
std::uint64_t LettersOf(std::string_view text);

} // namespace symbols
