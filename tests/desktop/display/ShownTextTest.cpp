#include "wren/desktop/display/ShownText.h"

#include <gtest/gtest.h>

namespace {

TEST(ShownText, InvalidBytesAreShownAsReplacementCharacters)
{
    EXPECT_EQ(wren::ShownText("a\xff\xc3z"), QString::fromUtf8("a\uFFFD\uFFFDz"));
    EXPECT_EQ(wren::ShownText("größer 😀"), QString::fromUtf8("größer 😀"));
}

struct Case {
    const char* why;
    std::string bytes;
    long offset;
    int units;
};
const Case kCases[] = {
    {"plain characters are one of each", "abc", 2, 2},
    {"two bytes, one unit", "äb", 2, 1},
    {"three bytes, one unit", "漢b", 3, 1},
    {"four bytes, two units", "😀b", 4, 2},
    {"inside a character: after it", "äb", 1, 1},
    {"a damaged byte is one sign",
     "\xff\xff"
     "b",
     1, 1},
    {"beyond the end: the end", "abc", 9, 3},
    {"the beginning", "abc", 0, 0},
};
TEST(ShownText, ConvertsOffsetsToUnits)
{
    for (const Case& c : kCases)
        EXPECT_EQ(wren::UnitsBefore(c.bytes, c.offset), c.units) << c.why;
}

TEST(ShownText, ConvertsUnitsToOffsets)
{
    const QString text = QString::fromUtf8("aä漢😀z");
    const long expected[] = {0, 1, 3, 6, -1, 10, 11}; // between the two units of one character nothing ends
    for (int units = 0; units <= text.size(); ++units) {
        if (expected[units] >= 0) {
            EXPECT_EQ(wren::BytesBefore(text, units), expected[units]) << units;
        }
    }
}

} // namespace
