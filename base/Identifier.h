// Names in C, C++ and Objective-C.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace base {

constexpr bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// ASCII only, whatever the locale: bytes from 0x80 up are never part of a name.
constexpr bool IsIdentifierStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

constexpr bool IsIdentifierCharacter(char c)
{
    return IsIdentifierStart(c) || IsDigit(c);
}

// The characters of a name at, around or directly before the offset, which may lie behind the text; empty for none.
constexpr std::string_view IdentifierAround(std::string_view text, std::size_t offset)
{
    std::size_t start = std::min(offset, text.size());
    std::size_t end = start;
    while (start > 0 && IsIdentifierCharacter(text[start - 1]))
        --start;
    while (end < text.size() && IsIdentifierCharacter(text[end]))
        ++end;
    return text.substr(start, end - start);
}

// A complete one such as "name" or "_2", without scopes or arguments.
constexpr bool IsIdentifier(std::string_view text)
{
    return !text.empty() && IsIdentifierStart(text.front()) && std::ranges::all_of(text, IsIdentifierCharacter);
}

} // namespace base
