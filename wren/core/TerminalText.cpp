#include "wren/core/TerminalText.h"

#include "vetch/display/Utf8.h"

#include <unistd.h>

namespace wren {

namespace {

bool IsFirstControl(unsigned char byte) // of ASCII
{
    return (byte < 0x20 && byte != '\t' && byte != '\n') || byte == 0x7f;
}

bool IsSecondControl(unsigned char byte)
{
    return byte >= 0x80 && byte < 0xa0;
}

bool IsControl(std::string_view character)
{
    const auto lead = static_cast<unsigned char>(character.front());
    const auto last = static_cast<unsigned char>(character.back());
    if (character.size() == 1)
        return IsFirstControl(lead) || IsSecondControl(lead);
    return character.size() == 2 && lead == 0xc2 && IsSecondControl(last);
}

} // namespace

std::string ForTerminal(std::string_view text)
{
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const std::string_view character = text.substr(0, vetch::CodePointLength(text));
        IsControl(character) ? shown += '?' : shown += character;
        text.remove_prefix(character.size());
    }
    return shown;
}

std::string ShownOn(int descriptor, const std::string& text)
{
    return ::isatty(descriptor) == 1 ? ForTerminal(text) : text;
}

} // namespace wren
