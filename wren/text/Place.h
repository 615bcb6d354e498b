// The place in a file that a lookup asks about, as users and editors write it.
#pragma once

#include <optional>
#include <string>

namespace wren {

// Lines and columns count from 1, columns in bytes.
struct Place {
    std::string file;
    long line = 0;
    long column = 0; // 0: not given

    std::string Text() const; // in the form that ParsePlace() reads
};

// "FILE:LINE" or "FILE:LINE:COLUMN"; the file's name may contain colons. nullopt, with the reason in '*error', for any
// other text.
std::optional<Place> ParsePlace(const std::string& text, std::string* error);

// The position in its line of a place without a column.
enum class WithoutColumn {
    FirstIdentifier, // its start; the line's start when there is no identifier
    LineEnd          // before its line break, of one byte or two
};

// The offset of the place in the file's text. nullopt, with the reason in '*error', when the text ends before it.
std::optional<long> OffsetOf(const Place& place, WithoutColumn withoutColumn, const std::string& text,
                             std::string* error);

} // namespace wren
