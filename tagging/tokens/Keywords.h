// The reserved words of C and C++.
#pragma once

#include <string_view>

namespace tagging {

enum class Keyword : unsigned char {
    No,
    OfBoth,              // reserved in C as well
    OfCplusplus,         // C has declarations with such names
    OfCplusplusOutright, // the same, and a reason to look whether the text is C++
};

Keyword KindOfKeyword(std::string_view word);

} // namespace tagging
