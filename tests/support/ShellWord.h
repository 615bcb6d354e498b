// Trees and temporary directories may lie below names that a shell would take apart.
#pragma once

#include <string>

// A word that a shell reads as exactly this text.
inline std::string ShellWord(const std::string& text)
{
    std::string word = "'";
    for (const char c : text)
        word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}
