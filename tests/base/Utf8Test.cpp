#include "base/Utf8.h"

#include <gtest/gtest.h>

namespace base {
namespace {

TEST(Utf8, FindsWhereACharacterEnds)
{
    const struct {
        const char* why;
        std::string_view text;
        size_t length;
    } kCases[] = {
        {"ASCII", "ab", 1},
        {"NUL is a character", std::string_view("\0a", 2), 1},
        {"the first of two bytes", "\xc2\x80", 2},
        {"the last of two bytes", "\xdf\xbf", 2},
        {"the first of three bytes", "\xe0\xa0\x80", 3},
        {"the last one before the surrogates", "\xed\x9f\xbf", 3},
        {"the first one after the surrogates", "\xee\x80\x80", 3},
        {"the last of three bytes, though no character", "\xef\xbf\xbf", 3},
        {"the first of four bytes", "\xf0\x90\x80\x80", 4},
        {"the last of all", "\xf4\x8f\xbf\xbf", 4},
        {"what stands behind does not matter", "\xc3\xa9\x80", 2},
        {"a byte that begins none", "\x80", 1},
        {"two bytes for ASCII", "\xc1\xbf", 1},
        {"three bytes for what fits into two", "\xe0\x9f\xbf", 1},
        {"four bytes for what fits into three", "\xf0\x8f\xbf\xbf", 1},
        {"the first surrogate", "\xed\xa0\x80", 1},
        {"the last surrogate", "\xed\xbf\xbf", 1},
        {"beyond the last code point", "\xf4\x90\x80\x80", 1},
        {"a lead byte far beyond", "\xf5\x80\x80\x80", 1},
        {"a lead byte of five bytes", "\xf8\x88\x80\x80\x80", 1},
        {"never a lead byte", "\xff", 1},
        {"cut off after one of two", "\xc3", 1},
        {"cut off after two of three", "\xe2\x82", 1},
        {"cut off after three of four", "\xf0\x9f\x90", 1},
        {"interrupted", "\xe2\x82z", 1},
        {"interrupted by a whole character", "\xe2\xc3\xa9", 1},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(CodePointLength(each.text), each.length) << each.why;
}

TEST(Utf8, CountsAStrayByteAsACharacter)
{
    EXPECT_EQ(CountCodePoints(""), 0u);
    EXPECT_EQ(CountCodePoints("a\xc3\xa9\xe2\x82\xac\xf0\x9f\x90\xa6"), 4u);
    EXPECT_EQ(CountCodePoints("\xe2\x82z\xed\xa0\x80"), 6u);
}

TEST(Utf8, KnowsStrayBytesAndContinuations)
{
    EXPECT_TRUE(IsStray("\x80"));
    EXPECT_FALSE(IsStray("a"));
    EXPECT_FALSE(IsStray("\xc3\xa9"));
    EXPECT_TRUE(ContinuesCharacter('\xbf'));
    EXPECT_FALSE(ContinuesCharacter('\xc0'));
    EXPECT_FALSE(ContinuesCharacter('a'));
}

TEST(Utf8, KnowsControlCharacters)
{
    const struct {
        const char* why;
        std::string_view character;
        bool isControl;
    } kCases[] = {
        {"NUL", std::string_view("\0", 1), true},
        {"a line break", "\n", true},
        {"the last one below the blank", "\x1f", true},
        {"the blank", " ", false},
        {"DEL", "\x7f", true},
        {"U+0080", "\xc2\x80", true},
        {"U+009F", "\xc2\x9f", true},
        {"U+00A0", "\xc2\xa0", false},
        {"a letter whose last byte is alike", "\xc3\x9b", false},
        {"the same as a stray byte", "\x9b", true},
        {"another stray byte", "\xa0", false},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(IsControl(each.character), each.isControl) << each.why;
}

TEST(ValidUtf8, ReplacesEachStrayByte)
{
    const struct {
        const char* why;
        std::string bytes;
        std::string text;
    } kCases[] = {
        {"plain", "abc", "abc"},
        {"two, three and four bytes", "\xc3\xa9\xe2\x82\xac\xf0\x9f\x90\xa6", "\xc3\xa9\xe2\x82\xac\xf0\x9f\x90\xa6"},
        {"a NUL is text", std::string("a\0b", 3), std::string("a\0b", 3)},
        {"a lone byte", "a\x80z", "a\xef\xbf\xbdz"},
        {"a cut sequence is replaced byte by byte", "\xe2\x82", "\xef\xbf\xbd\xef\xbf\xbd"},
        {"an overlong form", "\xc0\xaf", "\xef\xbf\xbd\xef\xbf\xbd"},
        {"half of a surrogate pair", "\xed\xa0\x80", "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"},
        {"beyond the last code point", "\xf4\x90\x80\x80", "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(ValidUtf8(each.bytes), each.text) << each.why;
    for (const auto& each : kCases)
        EXPECT_EQ(IsValidUtf8(each.bytes), each.bytes == each.text) << each.why;
}

TEST(AsciiPrefix, EndsAtTheFirstOtherByteWhereverItIs)
{
    for (size_t size = 0; size <= 24; ++size) {
        EXPECT_EQ(AsciiPrefix(std::string(size, '\x7f')), size);
        for (size_t at = 0; at < size; ++at) {
            std::string text(size, 'a');
            text[at] = '\x80';
            EXPECT_EQ(AsciiPrefix(text), at);
            EXPECT_FALSE(IsValidUtf8(text));
        }
    }
}

} // namespace
} // namespace base
