// Where in a file a lookup is asked for, as users and editors write it.
#pragma once

#include <optional>
#include <string>

namespace wren {

// Lines and columns count from 1, columns in bytes.
struct Place {
    std::string file;
    long line = 0;
    long column = 0; // 0: none was given

    std::string Text() const; // as it is written
};

// "FILE:LINE" or "FILE:LINE:COLUMN"; the file's name may hold colons itself. Nothing when it is neither.
std::optional<Place> ParsePlace(const std::string& text);

// The offset of the place in the file's text; without a column, where the line's first identifier begins. Nothing, with
// the reason in '*error', when the text ends before it.
std::optional<long> OffsetOf(const Place& place, const std::string& text, std::string* error);

} // namespace wren
