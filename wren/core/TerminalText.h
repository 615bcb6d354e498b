// Text from elsewhere, as it may be written to a terminal.
#pragma once

#include <string>
#include <string_view>

namespace wren {

// Without what a terminal would take for commands: each control character is a "?", but tabs and line breaks, which
// stay. Control characters are U+0000 to U+001F and U+007F to U+009F, and a byte from 0x80 to 0x9f that belongs to no
// character of UTF-8, since a terminal that counts in bytes takes it for one.
std::string ForTerminal(std::string_view text);

// As it goes to this descriptor: ForTerminal() for a terminal; programs get the bytes as they are.
std::string ShownOn(int descriptor, const std::string& text);

} // namespace wren
