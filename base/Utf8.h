// The characters of text that should be UTF-8 but may be any bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

// Whether the byte continues a character, if the text is valid.
constexpr bool ContinuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

// The bytes of the first code point of 'text', which must not be empty; 1 for a byte that is not part of a valid one.
// Overlong forms, surrogates and values beyond U+10FFFF are not valid.
size_t CodePointLength(std::string_view text);

// The first CodePointLength() bytes of 'text'.
inline std::string_view FirstCharacter(std::string_view text)
{
    return text.substr(0, CodePointLength(text));
}

// Whether a character from FirstCharacter() is a byte that belongs to no code point.
constexpr bool IsStray(std::string_view character)
{
    return character.size() == 1 && static_cast<unsigned char>(character[0]) >= 0x80;
}

// U+0000 to U+001F, U+007F to U+009F, and stray bytes from 0x80 to 0x9f: terminals without strict UTF-8 treat such a
// byte as a control character.
bool IsControl(std::string_view character);

// Each stray byte counts as one, for the sign drawn in its place.
size_t CountCodePoints(std::string_view text);

// The bytes before the first that is not ASCII. This and the next two take whole files: they are fast on ASCII.
size_t AsciiPrefix(std::string_view text);
bool IsAscii(std::string_view text);
bool IsValidUtf8(std::string_view text); // it has no stray byte

// Replaces each stray byte with U+FFFD.
std::string ValidUtf8(std::string_view text);

} // namespace base
