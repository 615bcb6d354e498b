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

// "FILE:LINE" or "FILE:LINE:COLUMN"; the file's name may hold colons itself. Nothing, with the reason in '*error', when
// it is neither.
std::optional<Place> ParsePlace(const std::string& text, std::string* error);

// Where in its line a place is that has no column.
enum class WithoutColumn {
    FirstIdentifier, // where that begins; the line's start when there is none
    LineEnd          // before its line break, of one byte or two
};

// The offset of the place in the file's text. Nothing, with the reason in '*error', when the text ends before it.
std::optional<long> OffsetOf(const Place& place, WithoutColumn withoutColumn, const std::string& text,
                             std::string* error);

} // namespace wren
