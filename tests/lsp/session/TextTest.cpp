#include "wren/lsp/session/Text.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <utility>

namespace {

using wren::lsp::Encoding;
using wren::lsp::Position;
using wren::lsp::Text;

// The offset of '|' is where the position leads.
struct Case {
    const char* why;
    const char* text;
    Position position;
    Encoding encoding = Encoding::Utf16;
};

const Case kPlaces[] = {
    {"the start", "|abc\n", {0, 0}},
    {"within a line", "ab|c\n", {0, 2}},
    {"behind a line's end", "abc|\nd", {0, 99}},
    {"behind the text's end", "abc\nd|", {7, 0}},
    {"a line feed and a carriage return end a line together", "a\r\nb|c", {1, 1}},
    {"a lone carriage return ends a line", "a\rb|c", {1, 1}},
    {"the end of a line with both", "abc|\r\nd", {0, 99}},
    {"a letter of two bytes is one unit of UTF-16", "ä|b", {0, 1}},
    {"a letter of two bytes is two units of UTF-8", "ä|b", {0, 2}, Encoding::Utf8},
    {"a letter beyond U+FFFF is two units of UTF-16", "😀|b", {0, 2}},
    {"the middle of a letter is its start", "a|😀b", {0, 2}},
    {"a byte that is not UTF-8 is one unit", "\xff\xfe|b", {0, 2}},
    {"a byte that is not UTF-8 is one unit of UTF-8, too", "\xff\xfe|b", {0, 2}, Encoding::Utf8},
};

TEST(Text, FindsOffsetsOfPositions)
{
    for (const Case& each : kPlaces) {
        std::string content = each.text;
        const size_t place = content.find('|');
        content.erase(place, 1);
        EXPECT_EQ(Text(content).OffsetOf(each.position, each.encoding), place) << each.why;
    }
}

void ExpectSame(const Text& made, const Text& read)
{
    ASSERT_EQ(made.Content(), read.Content());
    ASSERT_EQ(made.Lines(), read.Lines());
    for (size_t line = 0; line < read.Lines(); ++line)
        ASSERT_EQ(made.LineStart(line), read.LineStart(line)) << line;
    for (unsigned line = 1; line <= read.Lines() + 1; ++line)
        ASSERT_EQ(made.Source().LineStart(line), read.Source().LineStart(line)) << line;
}

// Few letters, so that carriage returns and line feeds meet and part often.
TEST(Text, ChangedInPlaceIsTheSameAsReadAgain)
{
    std::minstd_rand random(4711);
    const std::string kLetters = "a\r\n\n";
    auto letters = [&](size_t most) {
        std::string made(random() % (most + 1), ' ');
        for (char& each : made)
            each = kLetters[random() % kLetters.size()];
        return made;
    };
    for (int round = 0; round < 300; ++round) {
        auto text = std::make_unique<Text>(letters(30));
        for (int change = 0; change < 20; ++change) {
            size_t start = random() % (text->Content().size() + 1);
            size_t end = random() % (text->Content().size() + 1);
            if (start > end)
                std::swap(start, end);
            text = std::make_unique<Text>(*text, start, end, letters(5));
            ASSERT_NO_FATAL_FAILURE(ExpectSame(*text, Text(text->Content())));
        }
    }
}

} // namespace
