// The line ends of a text: detected, converted, and followed by what is typed.
#include "wren/desktop/editor/CodeView.h"

#include <QTest>

#include <gtest/gtest.h>

namespace wren {

namespace {

using namespace std::string_literals;

struct Conversion {
    const char* why;
    std::string before;
    LineEnds to;
    std::string after;
};

} // namespace

TEST(LineEnds, AreMixedWhenLinesDiffer)
{
    const std::pair<std::string, bool> kTexts[] = {
        {"", false},       {"a", false},       {"a\nb\n", false},     {"a\r\nb\r\n", false},
        {"a\rb\r", false}, {"a\nb\r\n", true}, {"a\rb\r\nc\n", true}, {"a\r\r\nb", true},
    };
    for (const auto& [text, isMixed] : kTexts) {
        CodeView view;
        view.SetBytes(text);
        EXPECT_EQ(view.HasMixedEnds(), isMixed) << QByteArray::fromStdString(text).toPercentEncoding().toStdString();
    }
}

TEST(LineEnds, AreConvertedInOneStep)
{
    const Conversion kCases[] = {
        {"Unix to Windows", "a\nb\n\nc", LineEnds::Windows, "a\r\nb\r\n\r\nc"},
        {"Windows to Unix", "a\r\nb\r\n", LineEnds::Unix, "a\nb\n"},
        {"Windows to Mac", "a\r\nb\r\n", LineEnds::Mac, "a\rb\r"},
        {"all kinds to Unix", "a\r\nb\nc\r\r\nd", LineEnds::Unix, "a\nb\nc\n\nd"},
        {"all kinds to the most common", "a\nb\nc\r\n", LineEnds::Unix, "a\nb\nc\n"},
        {"NUL and bytes that are not UTF-8", "a\0\n\xff\xc3\n"s, LineEnds::Windows, "a\0\r\n\xff\xc3\r\n"s},
        {"what only Unicode calls line ends stays",
         "a\xe2\x80\xa8"
         "b\n",
         LineEnds::Mac,
         "a\xe2\x80\xa8"
         "b\r"},
    };
    for (const Conversion& c : kCases) {
        CodeView view;
        view.SetBytes(c.before);
        const LineEnds ends = view.Ends();
        const bool wasMixed = view.HasMixedEnds();
        view.UseEnds(c.to);
        EXPECT_EQ(view.Bytes(), c.after) << c.why;
        EXPECT_EQ(view.Ends(), c.to) << c.why;
        EXPECT_FALSE(view.HasMixedEnds()) << c.why;
        EXPECT_TRUE(view.IsModified()) << c.why;
        view.undo();
        EXPECT_EQ(view.Bytes(), c.before) << c.why;
        EXPECT_EQ(view.Ends(), ends) << c.why;
        EXPECT_EQ(view.HasMixedEnds(), wasMixed) << c.why;
        EXPECT_FALSE(view.IsModified()) << c.why;
        view.redo();
        EXPECT_EQ(view.Bytes(), c.after) << c.why;
        EXPECT_EQ(view.Ends(), c.to) << c.why;
    }
}

TEST(LineEnds, ThatTheTextHasAlreadyChangeNothing)
{
    CodeView view;
    view.SetBytes("a\r\nb\r\n");
    view.UseEnds(LineEnds::Windows);
    EXPECT_EQ(view.Bytes(), "a\r\nb\r\n");
    EXPECT_FALSE(view.IsModified());
    EXPECT_FALSE(view.isUndoAvailable());
}

TEST(LineEnds, AreTypedAsChosenInATextThatHasNone)
{
    CodeView view;
    view.UseEnds(LineEnds::Windows);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(view.Bytes(), "\r\n");
    view.undo();
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(view.Bytes(), "\r\n");
}

TEST(LineEnds, AreConvertedWithTheCaretAndTheBookmarksAtTheirLines)
{
    CodeView view;
    view.SetBytes("a\nb\nc\n");
    view.SetBookmarks({1});
    view.GoTo(4);
    view.UseEnds(LineEnds::Windows);
    EXPECT_EQ(view.Caret(), 6);
    EXPECT_EQ(view.Bookmarks(), std::vector<long>{1});
}

} // namespace wren
