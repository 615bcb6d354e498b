// The characters of a text in UTF-8, which may not be text at all.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

// Whether the byte is one after the first of a character, as long as the text is valid.
constexpr bool ContinuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

// The bytes of the code point that 'text' begins with, which is not empty; 1 for a byte that is part of no valid one.
// Overlong forms, surrogates and what lies beyond U+10FFFF are not valid.
size_t CodePointLength(std::string_view text);

// The character that 'text' begins with: as many bytes as CodePointLength() says.
inline std::string_view FirstCharacter(std::string_view text)
{
    return text.substr(0, CodePointLength(text));
}

// Of a character as FirstCharacter() returns it: a byte that belongs to no code point.
constexpr bool IsStray(std::string_view character)
{
    return character.size() == 1 && static_cast<unsigned char>(character[0]) >= 0x80;
}

// U+0000 to U+001F, U+007F to U+009F, and a stray byte from 0x80 to 0x9f: terminals that do not read UTF-8, or read it
// carelessly, take the byte alone for a control character.
bool IsControl(std::string_view character);

// Each stray byte counts for itself, as the sign that is drawn in its place.
size_t CountCodePoints(std::string_view text);

// With U+FFFD in place of each stray byte.
std::string ValidUtf8(std::string_view text);

} // namespace base
