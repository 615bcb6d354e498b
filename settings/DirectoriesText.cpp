#include "settings/DirectoriesText.h"

namespace {

// Signed on every machine: bytes from 0x80 up are negative and separate directories, as control characters do. In
// names, letters beyond ASCII need a backslash before each byte.
bool IsUpTo(char ch, int limit)
{
    return static_cast<signed char>(ch) <= limit;
}

bool SeparatesStored(char ch)
{
    return IsUpTo(ch, ' ');
}

bool SeparatesWritten(char ch)
{
    return IsUpTo(ch, ' ' - 1) || ch == ':' || ch == ',';
}

std::string WithSeparators(std::string text, bool (*separates)(char), char separator)
{
    for (size_t i = 0; i < text.length(); ++i) {
        if (text[i] == '\\')
            ++i;
        else if (separates(text[i]))
            text[i] = separator;
    }
    return text;
}

} // namespace

std::string SystemDirectoriesStringForControl(const std::string& stored)
{
    return WithSeparators(stored, SeparatesStored, '\n');
}

std::string SystemDirectoriesStringForStore(const std::string& written)
{
    return WithSeparators(written, SeparatesWritten, ' ');
}
