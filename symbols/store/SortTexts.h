// Sorts millions of texts.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace symbols {

constexpr bool IsCapital(char c)
{
    return c >= 'A' && c <= 'Z';
}

constexpr char Lower(char c)
{
    return IsCapital(c) ? static_cast<char>(c + 32) : c;
}

enum class Case : std::uint8_t { Counts, Ignored };

// The order of texts without regard to case: ASCII only, whatever the locale.
int CompareIgnoringCase(std::string_view a, std::string_view b);

// Sorts the numbers by their texts, in the order of bytes. Equal texts, also those that differ by case only, are put in
// the order of their numbers.
void SortTexts(std::vector<std::uint32_t>& numbers, Case sensitivity,
               const std::function<std::string_view(std::uint32_t)>& textOf);

} // namespace symbols
