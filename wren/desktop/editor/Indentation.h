// What the lines of a file are indented with, and what a new line begins with.
#pragma once

#include <string>
#include <string_view>

namespace wren {

struct Indentation {
    bool tabs = false;
    int width = 4; // columns of one level; with tabs, of a tab

    bool operator==(const Indentation&) const = default;
};

// What most lines of the text show, or 'otherwise' when they show nothing. The width of tabs is always that of
// 'otherwise'.
Indentation DetectIndentation(std::string_view text, Indentation otherwise);

std::string_view LeadingBlanks(std::string_view line);

// What the line after 'line' begins with: the same, and one level more when 'line' ends with '{'.
std::string IndentationAfter(std::string_view line, Indentation indentation);

// One level less, for a '}' whose partner is not known.
std::string OneLevelLess(std::string_view blanks, Indentation indentation);

} // namespace wren
