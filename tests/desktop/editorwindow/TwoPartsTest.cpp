// Two parts of one text in the editor's window: commands act where the keyboard is.
#include "tests/desktop/editorwindow/EditorStory.h"

#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/editor/TextPanes.h"

#include <gmock/gmock.h>

namespace {

class TwoParts : public EditorStory {
protected:
    wren::TextPanes& Panes() { return *TheEditor().Window().Tabs().CurrentPanes(); }
};

} // namespace

TEST_F(TwoParts, AreChosenByKeysAndGoneByTheSameKey)
{
    Start({home.Write("a.c", "int a;\n")});
    Press("Ctrl+\\");
    EXPECT_EQ(Panes().IsSplit(), wren::Split::Beside);
    Press("Ctrl+Alt+\\");
    EXPECT_EQ(Panes().IsSplit(), wren::Split::Below);
    Press("Ctrl+Alt+\\");
    EXPECT_EQ(Panes().IsSplit(), wren::Split::None);
}

TEST_F(TwoParts, AreTypedInWhereTheKeyboardIs)
{
    Start({home.Write("a.c", "int a;\nint b;\n")});
    Press("Ctrl+\\");
    View().GoTo(13);
    Press("F6");
    EXPECT_EQ(View().Caret(), 0);
    Type("x");
    EXPECT_EQ(Text(), "xint a;\nint b;\n");
    Press("F6");
    EXPECT_EQ(View().Caret(), 14) << "moved with the text";
    Type("y");
    EXPECT_EQ(Text(), "xint a;\nint b;y\n");
    EXPECT_EQ(Panes().Other()->Bytes(), Text());
    Press("Ctrl+S");
    EXPECT_EQ(Content(home / "a.c"), Text());
}

TEST_F(TwoParts, BelongToTheirTextAndCloseWithIt)
{
    Start({home.Write("a.c", "int a;\n"), home.Write("b.c", "int b;\n")});
    Press("Ctrl+\\");
    Press("Ctrl+PgUp");
    EXPECT_EQ(Panes().IsSplit(), wren::Split::None);
    Press("Ctrl+PgDown");
    EXPECT_EQ(Panes().IsSplit(), wren::Split::Beside);
    Press("Ctrl+W");
    EXPECT_THAT(Tabs(), testing::ElementsAre("a.c"));
    Type("x");
    EXPECT_EQ(Text(), "xint a;\n");
}
