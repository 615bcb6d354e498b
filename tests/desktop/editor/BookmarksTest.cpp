// Marked lines, and the way between them.
#include "wren/desktop/editor/Bookmarks.h"
#include "wren/desktop/editor/CodeView.h"

#include <gtest/gtest.h>

#include <QtTest/QTest>

namespace wren {
namespace {

using Lines = std::vector<long>;

void Mark(CodeView& view, const Lines& lines)
{
    for (const long line : lines) {
        view.GoToLine(line + 1);
        view.Apply(BookmarkCommand::Toggle);
    }
}

long CaretLine(const CodeView& view)
{
    return ViewText(view).Send(QsciScintilla::SCI_LINEFROMPOSITION, view.Caret());
}

} // namespace

TEST(Bookmarks, ComeAndGoOnTheCaretsLine)
{
    CodeView view;
    view.SetBytes("a\nb\nc\n");
    Mark(view, {0, 2});
    EXPECT_EQ(view.Bookmarks(), (Lines{0, 2}));
    Mark(view, {0});
    EXPECT_EQ(view.Bookmarks(), (Lines{2}));
    EXPECT_FALSE(view.IsModified());
    view.Apply(BookmarkCommand::RemoveAll);
    EXPECT_EQ(view.Bookmarks(), Lines{});
}

TEST(Bookmarks, AreReachedInTurnPastTheEnds)
{
    CodeView view;
    view.SetBytes("a\nb\nc\nd\n");
    Mark(view, {1, 3});
    view.GoToLine(1);
    for (const long expected : {1, 3, 1}) {
        view.Apply(BookmarkCommand::Next);
        EXPECT_EQ(CaretLine(view), expected);
    }
    for (const long expected : {3, 1, 3}) {
        view.Apply(BookmarkCommand::Previous);
        EXPECT_EQ(CaretLine(view), expected);
    }
    view.Apply(BookmarkCommand::RemoveAll);
    view.Apply(BookmarkCommand::Next);
    EXPECT_EQ(CaretLine(view), 3) << "none is left";
}

TEST(Bookmarks, MoveWithTheirLines)
{
    CodeView view;
    view.SetBytes("a\nb\nc\n");
    Mark(view, {1});
    view.GoTo(0);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(view.Bookmarks(), (Lines{2}));
    view.ReadAgain("x\n\na\nb\nc\n");
    EXPECT_EQ(view.Bookmarks(), (Lines{3}));
}

TEST(Bookmarks, AreSetOnlyWhereTheTextHasLines)
{
    CodeView view;
    view.SetBytes("a\nb\n");
    view.SetBookmarks({-1, 1, 700, 1});
    EXPECT_EQ(view.Bookmarks(), (Lines{1}));
}

} // namespace wren
