#include "wren/text/PlainText.h"

#include <gtest/gtest.h>
#include <string>

using wren::PlainText;
using wren::Selection;

namespace {

PlainText Made(const std::string& text)
{
    PlainText made;
    made.SetText(text);
    return made;
}

} // namespace

TEST(PlainText, ReturnsANulByteOutsideItsText)
{
    const PlainText document = Made("ab");
    const struct {
        const char* why;
        long offset;
        char byte;
    } kCases[] = {
        {"the first", 0, 'a'},
        {"the last", 1, 'b'},
        {"scanners look just behind the end", 2, '\0'},
        {"scanners look just before the beginning", -1, '\0'},
        {"far away", 1'000'000, '\0'},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(document.CharAt(each.offset), each.byte) << each.why;
}

TEST(PlainText, CopiesExistingBytesOnly)
{
    const PlainText document = Made("abcd");
    const struct {
        const char* why;
        long offset;
        long length;
        const char* buffer;
    } kCases[] = {
        {"inside", 1, 2, "bc......"},
        {"all", 0, 4, "abcd...."},
        {"over the end", 2, 6, "cd......"},
        {"over the beginning", -2, 4, "..ab...."},
        {"nothing asked for", 1, 0, "........"},
        {"a negative length", 1, -1, "........"},
        {"past the end", 9, 3, "........"},
    };
    for (const auto& each : kCases) {
        char buffer[] = "........";
        document.GetText(buffer, each.offset, each.length);
        EXPECT_STREQ(buffer, each.buffer) << each.why;
    }
}

TEST(PlainText, ClampsTheSelectionAndOrdersItsEnds)
{
    PlainText document = Made("abcd");
    const struct {
        const char* why;
        long start, end;
        Selection selected;
    } kCases[] = {
        {"inside", 1, 3, {1, 3}},
        {"a caret at the end", 4, 4, {4, 4}},
        {"outside on both sides", -5, 50, {0, 4}},
        {"backwards", 3, 1, {1, 3}},
    };
    for (const auto& each : kCases) {
        document.Select(each.start, each.end);
        EXPECT_EQ(document.Selected(), each.selected) << each.why;
    }
}

TEST(PlainText, CountsLinesByLineFeeds)
{
    const PlainText document = Made("a\r\nb\rc\n");
    EXPECT_EQ(document.LineAt(0), 0);
    EXPECT_EQ(document.LineAt(2), 0) << "the line feed belongs to the line that it ends";
    EXPECT_EQ(document.LineAt(3), 1);
    EXPECT_EQ(document.LineAt(6), 1) << "a carriage return ends nothing";
    EXPECT_EQ(document.LineAt(7), 2) << "behind the last line feed";
    EXPECT_EQ(document.LineAt(-1), 0);
    EXPECT_EQ(document.LineAt(99), 2);
    EXPECT_EQ(document.LineStart(1), 3);
    EXPECT_EQ(document.LineEnd(1), 6);
    EXPECT_EQ(document.LineStart(9), 7);
}

TEST(PlainText, FindsLinesAgainAfterAnEditBeforeThem)
{
    PlainText document = Made("a\nb\nc");
    EXPECT_EQ(document.LineAt(4), 2);
    document.Insert(1, "\n\n");
    EXPECT_EQ(document.LineAt(6), 4);
    document.Delete(0, 3);
    EXPECT_EQ(document.LineAt(3), 2);
    document.SetText("x\ny");
    EXPECT_EQ(document.LineAt(3), 1);
}

TEST(PlainText, MovesOnlyCaretsBehindAnInsertion)
{
    PlainText document = Made("abcd");
    document.Select(2, 3);
    document.Insert(2, "XY");
    EXPECT_EQ(document.Selected(), (Selection{2, 5}));
    document.Delete(0, 3);
    EXPECT_EQ(document.Selected(), (Selection{0, 2}));
}

TEST(PlainText, UndoesAllEditsOfAGroupAndItsSelection)
{
    PlainText document = Made("foo bar");
    document.Select(4, 7);
    document.BeginUndo({4, 7}, "Insert symbol completion");
    document.Delete(4, 3);
    document.Insert(4, "barbarian");
    document.Select(13, 13);
    document.CloseUndo();
    EXPECT_EQ(document.Text(), "foo barbarian");
    EXPECT_EQ(document.Undo(), "Insert symbol completion");
    EXPECT_EQ(document.Text(), "foo bar");
    EXPECT_EQ(document.Selected(), (Selection{4, 7}));
    EXPECT_EQ(document.Undo(), std::nullopt);
}

TEST(PlainText, ClosesAGroupWhenTheNextBegins)
{
    PlainText document = Made("");
    document.BeginUndo({0, 0}, "first");
    document.Insert(0, "a");
    document.BeginUndo({1, 1}, "second");
    document.Insert(1, "b");
    EXPECT_EQ(document.Undo(), "second");
    EXPECT_EQ(document.Text(), "a");
    EXPECT_EQ(document.Undo(), "first");
    EXPECT_EQ(document.Text(), "");
}

TEST(PlainText, ForgetsAGroupWithoutEdits)
{
    PlainText document = Made("");
    document.BeginUndo({0, 0}, "nothing came of it");
    document.CloseUndo();
    EXPECT_EQ(document.Undo(), std::nullopt);
}

TEST(PlainText, UndoesAnUngroupedEditSeparately)
{
    PlainText document = Made("ab");
    document.Insert(2, "c");
    document.Delete(0, 1);
    EXPECT_EQ(document.Undo(), PlainText::kEdit);
    EXPECT_EQ(document.Text(), "abc");
    EXPECT_EQ(document.Undo(), PlainText::kEdit);
    EXPECT_EQ(document.Text(), "ab");
}

TEST(PlainText, ClampsEditsToItsText)
{
    PlainText document = Made("abc");
    document.Insert(99, "d");
    document.Insert(-5, "_");
    EXPECT_EQ(document.Text(), "_abcd");
    document.Delete(3, 99);
    document.Delete(-2, 3);
    document.Delete(1, -1);
    EXPECT_EQ(document.Text(), "ab");
}

TEST(PlainText, ScansAHugeTextForLinesOnce)
{
    constexpr long kSize = 100'000'000;
    std::string text(kSize, 'x');
    for (long at = 79; at < kSize; at += 80)
        text[at] = '\n';
    PlainText document;
    document.SetText(text);

    EXPECT_EQ(document.LineAt(1'000), 12);
    EXPECT_LT(document.Lines().BytesRead(), 1'000'000) << "the beginning was asked for, and the rest read";
    for (long at = kSize; at > 0; at -= 997)
        ASSERT_EQ(document.LineAt(at), at / 80);
    EXPECT_EQ(document.CharAt(kSize - 1), '\n');
    EXPECT_LE(document.Lines().BytesRead(), kSize);
}

TEST(PlainText, RescansOnlyBehindAnEdit)
{
    std::string text(10'000'000, 'x');
    PlainText document;
    document.SetText(text);
    document.LineAt(document.Length());
    const long before = document.Lines().BytesRead();
    for (int i = 0; i < 100; ++i) {
        document.Insert(document.Length() - 10, "\n");
        EXPECT_EQ(document.LineAt(document.Length() - 1), i + 1);
    }
    EXPECT_LT(document.Lines().BytesRead() - before, 100'000);
}
