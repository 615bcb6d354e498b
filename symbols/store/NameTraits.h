// What rules out most names that do not match a few typed letters.
#pragma once

#include "symbols/store/Format.h"

#include <cstdint>
#include <string_view>

namespace symbols {

constexpr unsigned kInitialsShift = 32;

bool IsWordStart(std::string_view name, size_t at);

std::uint64_t LetterBit(char c);                // one of 32
std::uint64_t PairBit(char first, char second); // one of 64
NameTraits TraitsOf(std::string_view name);     // of its first kLongestFuzzy bytes

} // namespace symbols
