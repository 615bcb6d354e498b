// Quotes paths that a shell would split.
#pragma once

#include <string>

// A shell word that reads as exactly this text.
inline std::string ShellWord(const std::string& text)
{
    std::string word = "'";
    for (const char c : text)
        word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}
