// Which lines count as changed since the text was saved.
#include "wren/desktop/editor/CodeView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace wren {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ChangedLines : public ::testing::Test {
protected:
    ChangedLines() { view.SetBytes("one\ntwo\nthree\n"); }

    void Insert(long line, long column, const char* what)
    {
        view.insertAt(what, static_cast<int>(line), static_cast<int>(column));
    }

    CodeView view;
};

} // namespace

TEST_F(ChangedLines, AreNoneOfATextThatWasRead)
{
    EXPECT_THAT(view.ChangedLines(), IsEmpty());
    view.ReadAgain("one\n2\nthree\n");
    EXPECT_THAT(view.ChangedLines(), IsEmpty()) << "another program has written it";
}

TEST_F(ChangedLines, AreThoseThatWereTypedInto)
{
    Insert(1, 3, "x");
    Insert(1, 0, "x");
    EXPECT_THAT(view.ChangedLines(), ElementsAre(1));
    EXPECT_FALSE(view.Bookmarks().size());
}

TEST_F(ChangedLines, AreNewOnesAloneBesideALine)
{
    Insert(1, 3, "\nnew\nnewer");
    EXPECT_THAT(view.ChangedLines(), ElementsAre(2, 3)) << "behind the line";
    Insert(0, 0, "first\n");
    EXPECT_THAT(view.ChangedLines(), ElementsAre(0, 3, 4)) << "before a line; the others move";
    Insert(1, 1, "\n");
    EXPECT_THAT(view.ChangedLines(), ElementsAre(0, 1, 2, 4, 5)) << "both halves of a line";
}

TEST_F(ChangedLines, AreMarkedByTheNextChangeAtTheLatest)
{
    Insert(0, 0, "a\nb\n");
    Insert(4, 0, "x");
    EXPECT_THAT(view.ChangedLines(), ElementsAre(0, 1, 4));
}

TEST_F(ChangedLines, AreWhereLinesWereDeleted)
{
    view.setSelection(0, 2, 2, 1);
    view.removeSelectedText();
    EXPECT_EQ(view.Bytes(), "onhree\n");
    EXPECT_THAT(view.ChangedLines(), ElementsAre(0));
}

TEST_F(ChangedLines, AreForgottenWhenTheTextIsSavedOrUndone)
{
    Insert(1, 0, "x");
    view.undo();
    EXPECT_THAT(view.ChangedLines(), IsEmpty());
    view.redo();
    EXPECT_THAT(view.ChangedLines(), ElementsAre(1));
    view.MarkSaved();
    EXPECT_THAT(view.ChangedLines(), IsEmpty());
    view.undo();
    EXPECT_THAT(view.ChangedLines(), ElementsAre(1)) << "it differs from what was saved";
}

TEST_F(ChangedLines, OfALargeInsertionAreTheFirst)
{
    QString many;
    for (long line = 0; line < ChangeMarks::kMostAtOnce + 5; ++line)
        many += "x\n";
    view.insertAt(many, 0, 0);
    EXPECT_EQ(view.ChangedLines().size(), static_cast<size_t>(ChangeMarks::kMostAtOnce));
}

TEST_F(ChangedLines, CanBeHidden)
{
    view.HideChangedLines();
    Insert(1, 0, "x");
    EXPECT_THAT(view.ChangedLines(), IsEmpty());
}

} // namespace wren
