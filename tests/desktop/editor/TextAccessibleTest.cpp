// What assistive programs read of a text, in the units that they count in.
#include "wren/desktop/editor/TextAccessible.h"

#include "wren/desktop/editor/CodeView.h"

#include <gtest/gtest.h>

namespace wren {
namespace {

class TextAccessibleTest : public testing::Test {
protected:
    void Show(std::string_view bytes)
    {
        view.SetBytes(bytes);
        QAccessibleInterface* const thing = QAccessible::queryAccessibleInterface(&view);
        ASSERT_NE(thing, nullptr);
        text = thing->textInterface();
        ASSERT_NE(text, nullptr);
        editable = thing->editableTextInterface();
        ASSERT_NE(editable, nullptr);
    }

    CodeView view;
    QAccessibleTextInterface* text = nullptr;
    QAccessibleEditableTextInterface* editable = nullptr;
};

} // namespace

TEST_F(TextAccessibleTest, CountsTheUnitsOfUtf16)
{
    Show("a\u00e9\U0001F600b\nsecond \u20ac\n");
    EXPECT_EQ(text->characterCount(), 15);
    EXPECT_EQ(text->text(2, 5), QString::fromUtf8("\U0001F600b"));
    view.GoTo(7); // behind the letter of four bytes
    EXPECT_EQ(text->cursorPosition(), 4);
    text->setCursorPosition(13);
    EXPECT_EQ(view.Caret(), 16);
    text->setSelection(0, 1, 4);
    int start = 0;
    int end = 0;
    text->selection(0, &start, &end);
    EXPECT_EQ(start, 1);
    EXPECT_EQ(end, 4);
    text->removeSelection(0);
    EXPECT_EQ(text->selectionCount(), 0);
}

TEST_F(TextAccessibleTest, FollowsChanges)
{
    Show("\u00e9\n");
    EXPECT_EQ(text->characterCount(), 2);
    editable->insertText(1, QString::fromUtf8("\u00fc\n"));
    EXPECT_EQ(view.Bytes(), "\u00e9\u00fc\n\n");
    editable->replaceText(0, 1, "ab");
    editable->deleteText(3, 4);
    EXPECT_EQ(view.Bytes(), "ab\u00fc\n");
    EXPECT_EQ(text->characterCount(), 4);
    view.SetBytes("");
    EXPECT_EQ(text->characterCount(), 0);
    EXPECT_EQ(text->text(0, -1), "");
}

TEST_F(TextAccessibleTest, FindsWordsAndLinesInTheMiddleOfALongText)
{
    std::string bytes;
    for (int line = 0; line < 10'000; line++)
        bytes += "\u00e9 word" + std::to_string(line) + " end\n";
    Show(bytes);
    int start = 0;
    int end = 0;
    const QString line = text->textAtOffset(static_cast<int>(text->text(0, -1).indexOf("word7000")),
                                            QAccessible::LineBoundary, &start, &end);
    EXPECT_EQ(line.trimmed(), QString::fromUtf8("\u00e9 word7000 end"));
    EXPECT_EQ(text->text(start, end), line);
    EXPECT_EQ(text->textAtOffset(start + 2, QAccessible::WordBoundary, &start, &end), "word7000");
    EXPECT_EQ(text->textAfterOffset(start, QAccessible::CharBoundary, &start, &end), "o");
    EXPECT_EQ(text->textBeforeOffset(start, QAccessible::CharBoundary, &start, &end), "w");
}

TEST_F(TextAccessibleTest, FindsPiecesAtBothEnds)
{
    struct Case {
        int offset;
        QAccessible::TextBoundaryType type;
        const char* before;
        const char* at;
        const char* after;
    };
    Show("one, two\n\nlast");
    for (const auto& [offset, type, before, at, after] : {Case{0, QAccessible::WordBoundary, "", "one", ","},
                                                          {3, QAccessible::WordBoundary, "one", ",", "two"},
                                                          {4, QAccessible::WordBoundary, ",", " ", "two"},
                                                          {14, QAccessible::WordBoundary, "last", "", ""},
                                                          {0, QAccessible::LineBoundary, "", "one, two\n", "\n"},
                                                          {9, QAccessible::LineBoundary, "one, two\n", "\n", "last"},
                                                          {14, QAccessible::LineBoundary, "\n", "last", ""},
                                                          {13, QAccessible::CharBoundary, "s", "t", ""}}) {
        int start = 0;
        int end = 0;
        EXPECT_EQ(text->textBeforeOffset(offset, type, &start, &end), before) << offset;
        EXPECT_EQ(text->textAtOffset(offset, type, &start, &end), at) << offset;
        EXPECT_EQ(text->text(start, end), at) << offset;
        EXPECT_EQ(text->textAfterOffset(offset, type, &start, &end), after) << offset;
    }
}

TEST_F(TextAccessibleTest, TakesAnyOffset)
{
    Show("\xff\xfe ab\n");
    int start = 0;
    int end = 0;
    for (const int offset : {-100, -2, -1, 0, 3, 1000}) {
        text->textAtOffset(offset, QAccessible::WordBoundary, &start, &end);
        EXPECT_LE(end, text->characterCount());
        text->characterRect(offset);
        text->setCursorPosition(offset);
        EXPECT_GE(view.Caret(), 0);
        EXPECT_LE(view.Caret(), 6);
        editable->insertText(offset, "");
    }
    EXPECT_EQ(view.Bytes(), "\xff\xfe ab\n");
}

} // namespace wren
