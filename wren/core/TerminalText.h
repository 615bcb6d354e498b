// Untrusted text, made safe for a terminal.
#pragma once

#include <string>
#include <string_view>

namespace wren {

// Replaces each control character, which a terminal would execute, by "?"; keeps tabs and line breaks. Control
// characters are U+0000 to U+001F and U+007F to U+009F, and bytes from 0x80 to 0x9f outside UTF-8 characters, since a
// byte-oriented terminal executes those.
std::string ForTerminal(std::string_view text);

// The text for this descriptor: ForTerminal() for a terminal; programs get the bytes unchanged.
std::string ShownOn(int descriptor, const std::string& text);

} // namespace wren
