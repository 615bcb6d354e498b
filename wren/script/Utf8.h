// Text as characters, where it may not be text at all.
#pragma once

#include <string>
#include <string_view>

namespace wren {

// How many bytes the character at the beginning of 'text' has: a whole code point of valid UTF-8, or else one byte, which
// then counts as a character of its own. 0 for an empty text.
long CharacterLength(std::string_view text);

long CountCharacters(std::string_view text);

// With U+FFFD in place of each byte that is no part of valid UTF-8.
std::string ValidUtf8(std::string_view text);

} // namespace wren
