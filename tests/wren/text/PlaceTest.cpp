#include "wren/text/Place.h"

#include <gtest/gtest.h>

namespace wren {

namespace {

struct ParseCase {
    const char* why;
    const char* text;
    const char* file; // null: no place
    long line;
    long column;
};

const ParseCase kParseCases[] = {
    {"line and column", "src/a.cpp:12:8", "src/a.cpp", 12, 8},
    {"a line alone has no column", "a.cpp:12", "a.cpp", 12, 0},
    {"a colon in the file's name", "a:b.cpp:12:8", "a:b.cpp", 12, 8},
    {"numbers in the file's name", "a:1:2:3", "a:1", 2, 3},
    {"no line", "a.cpp", nullptr, 0, 0},
    {"lines count from 1", "a.cpp:0", nullptr, 0, 0},
    {"no negative lines", "a.cpp:-3", nullptr, 0, 0},
    {"no file", ":12:8", nullptr, 0, 0},
    {"not a number", "a.cpp:12x", nullptr, 0, 0},
    {"nothing behind the colon", "a.cpp:", nullptr, 0, 0},
    {"more than a long holds", "a.cpp:99999999999999999999", nullptr, 0, 0},
};

struct OffsetCase {
    const char* why;
    const char* text;
    long line;
    long column;
    long offset; // -1: beyond the text
    WithoutColumn withoutColumn = WithoutColumn::FirstIdentifier;
};

const OffsetCase kOffsetCases[] = {
    {"the first column", "ab\ncd\n", 2, 1, 3},
    {"just behind a line's last byte is still of that line", "ab\ncd\n", 1, 3, 2},
    {"beyond the line", "ab\ncd\n", 1, 4, -1},
    {"the empty line behind the last line break", "ab\n", 2, 1, 3},
    {"beyond the last line", "ab\n", 3, 1, -1},
    {"without a column, the first identifier", "  (*call)(x)\n", 1, 0, 4},
    {"without a column and an identifier, the line's start", "x\n  ()\n", 2, 0, 2},
    {"without a column, the line's end", "  (*call)(x)\ny", 1, 0, 12, WithoutColumn::LineEnd},
    {"the end of a line with a break of two bytes", "ab\r\ncd", 1, 0, 2, WithoutColumn::LineEnd},
    {"the end of an empty line", "ab\n\ncd", 2, 0, 3, WithoutColumn::LineEnd},
    {"the end of the last line", "ab\ncd", 2, 0, 5, WithoutColumn::LineEnd},
    {"a column counts, whatever would be meant without", "ab\ncd", 2, 2, 4, WithoutColumn::LineEnd},
    {"columns count bytes", "\xc3\xa4 b\n", 1, 4, 3},
    {"an empty text has one empty line", "", 1, 1, 0},
};

} // namespace

TEST(Place, IsParsedFromTheEndOfTheText)
{
    for (const ParseCase& c : kParseCases) {
        std::string error;
        const std::optional<Place> place = ParsePlace(c.text, &error);
        ASSERT_EQ(place.has_value(), c.file != nullptr) << c.why;
        EXPECT_EQ(error.empty(), place.has_value()) << c.why;
        if (!place)
            continue;
        EXPECT_EQ(place->file, c.file) << c.why;
        EXPECT_EQ(place->line, c.line) << c.why;
        EXPECT_EQ(place->column, c.column) << c.why;
        EXPECT_EQ(place->Text(), c.text) << c.why;
    }
}

TEST(Place, HasAnOffsetInTheText)
{
    for (const OffsetCase& c : kOffsetCases) {
        std::string error;
        const std::optional<long> offset = OffsetOf({"f", c.line, c.column}, c.withoutColumn, c.text, &error);
        EXPECT_EQ(offset.value_or(-1), c.offset) << c.why;
        EXPECT_EQ(error.empty(), offset.has_value()) << c.why;
    }
}

} // namespace wren
