#include "scan/Text.h"

#include "plugin/PluginInterface.h"
#include "scan/CompletionEdit.h"
#include "scan/HostText.h"
#include "scan/WordScan.h"
#include "tests/support/FakeHost.h"

#include <gtest/gtest.h>

namespace {

struct RangeCase {
    const char* why;
    long start;
    long end;
    std::string text;
};

const RangeCase kRangeCases[] = {
    {"the whole text", 0, 5, "ab\ncd"},
    {"a piece of it", 1, 4, "b\nc"},
    {"an empty range", 2, 2, ""},
    {"a range that begins before the text", -2, 1, std::string("\0\0a", 3)},
    {"a range that ends behind the text", 4, 6, std::string("d\0", 2)},
};

TEST(StringText, AnswersLikeTheHost)
{
    FakeHost host;
    host.text = "ab\ncd";
    const scan::HostText document(&host);
    const scan::StringText text(host.text);
    EXPECT_EQ(text.Length(), document.Length());
    for (long offset = -2; offset <= 7; ++offset) {
        EXPECT_EQ(text.At(offset), document.At(offset)) << offset;
        EXPECT_EQ(text.LineAt(offset), document.LineAt(offset)) << offset;
    }
    for (const RangeCase& c : kRangeCases) {
        EXPECT_EQ(text.Range(c.start, c.end), c.text) << c.why;
        EXPECT_EQ(document.Range(c.start, c.end), c.text) << c.why;
    }
}

struct LineCase {
    const char* why;
    long offset;
    long line;
};

const LineCase kLineCases[] = {
    {"before the text", -1, 0},        {"its beginning", 0, 0},       {"a line end is on the line that it ends", 2, 0},
    {"the beginning of a line", 3, 1}, {"the end of the text", 5, 1}, {"behind the text", 6, 1},
};

TEST(StringText, CountsLinesFromZero)
{
    for (const LineCase& c : kLineCases)
        EXPECT_EQ(scan::StringText("ab\ncd").LineAt(c.offset), c.line) << c.why;
}

TEST(StringText, CanBeScannedWithoutAHost)
{
    const scan::StringText text("x = std::vec + foo;");
    EXPECT_EQ(scan::WordAround(text, 6, 6), "std::vec");

    const auto word = scan::WordBefore(text, 18);
    ASSERT_TRUE(word);
    EXPECT_EQ(text.Range(word->start, word->start + word->length), "foo");

    const auto edit = scan::CompletionEdit(text, 12, "std::vector");
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->start, 9);
    EXPECT_EQ(edit->end, 12);
    EXPECT_EQ(edit->text, "vector");
    EXPECT_EQ(edit->caret, 15);
}

} // namespace
