// The indentation of a file's lines, and that of a new line.
#pragma once

#include <string>
#include <string_view>

namespace wren {

struct Indentation {
    bool tabs = false;
    int width = 4; // columns of one level; with tabs, of a tab

    bool operator==(const Indentation&) const = default;
};

// The indentation of most lines of the text, or 'otherwise' when no line is indented. The width of tabs is always that
// of 'otherwise'.
Indentation DetectIndentation(std::string_view text, Indentation otherwise);

std::string_view LeadingBlanks(std::string_view line);

// The blanks that the line after 'line' begins with: the same as its own, and one level more after a final '{'.
std::string IndentationAfter(std::string_view line, Indentation indentation);

// One level less, for a '}' whose partner is not known.
std::string OneLevelLess(std::string_view blanks, Indentation indentation);

} // namespace wren
