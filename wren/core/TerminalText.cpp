#include "wren/core/TerminalText.h"

#include "base/Utf8.h"

#include <unistd.h>

namespace wren {

namespace {

bool IsLayout(std::string_view character)
{
    return character == "\t" || character == "\n";
}

} // namespace

std::string ForTerminal(std::string_view text)
{
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const std::string_view character = base::FirstCharacter(text);
        if (base::IsControl(character) && !IsLayout(character))
            shown += '?';
        else
            shown += character;
        text.remove_prefix(character.size());
    }
    return shown;
}

std::string ShownOn(int descriptor, const std::string& text)
{
    return ::isatty(descriptor) == 1 ? ForTerminal(text) : text;
}

} // namespace wren
