// The menus' items that act on the text: several carets, folds, and what is shown of the text.
#include "tests/desktop/editorwindow/EditorStory.h"

#include "wren/desktop/MainWindow.h"
#include "wren/desktop/editor/ViewText.h"

#include <Qsci/qsciscintilla.h>

#include <QMenu>
#include <QMenuBar>
#include <QToolButton>

namespace {

class TextMenus : public EditorStory {
protected:
    // In a menu below "View".
    void ChooseBelow(const QString& menu, const QString& item)
    {
        const auto below = TheEditor().Window().menuBar()->findChildren<QMenu*>();
        for (const QMenu* each : below)
            for (QAction* action : each->title().remove('&') == menu ? each->actions() : QList<QAction*>())
                if (action->text().remove('&') == item)
                    return action->trigger();
        FAIL() << item.toStdString();
    }
    long Ask(unsigned message, long first = 0) { return wren::ViewText(View()).Send(message, first); }
};

} // namespace

TEST_F(TextMenus, TypeAtSeveralCarets)
{
    Start({home.Write("a.c", "int count;\nint use(void) { return count; }\n")});
    View().GoTo(5);
    Press("Ctrl+D");
    Press("Ctrl+D");
    Type("n");
    EXPECT_EQ(Text(), "int n;\nint use(void) { return n; }\n");
    Press("Ctrl+Z");
    EXPECT_EQ(Text(), "int count;\nint use(void) { return count; }\n");
}

TEST_F(TextMenus, FoldAndUnfoldBlocks)
{
    Start({home.Write("a.c", "int f()\n{\n    return 1;\n}\n")});
    View().GoToLine(3);
    Press("Ctrl+Shift+[");
    EXPECT_FALSE(Ask(QsciScintilla::SCI_GETLINEVISIBLE, 2));
    Press("Ctrl+Shift+]");
    EXPECT_TRUE(Ask(QsciScintilla::SCI_GETLINEVISIBLE, 2));
    ChooseBelow("Folding", "Fold All");
    EXPECT_FALSE(Ask(QsciScintilla::SCI_GETLINEVISIBLE, 2));
}

TEST_F(TextMenus, WrapLinesAndKeepThatForTheNextStart)
{
    Start();
    EXPECT_FALSE(View().Look().wraps);
    Press("Alt+Z");
    EXPECT_TRUE(View().Look().wraps);
    EXPECT_TRUE(Until([this] { return Content(SettingsFile()).find("WrenWrapLines on") != std::string::npos; }));
    Press("Alt+Z");
    EXPECT_FALSE(View().Look().wraps);
    Choose("View", "Show Levels of Indentation");
    EXPECT_EQ(Ask(QsciScintilla::SCI_GETINDENTATIONGUIDES), QsciScintilla::SC_IV_LOOKBOTH);
}

TEST_F(TextMenus, ConvertLineEndsAndShowThem)
{
    const std::string file = home.Write("a.c", "int a;\r\nint b;\nint c;\n");
    Start({file});
    const auto* shown = TheEditor().Window().findChild<QToolButton*>("lineEnds");
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->text(), "LF, mixed");
    ChooseBelow("Line Ends", "CR LF (Windows)");
    EXPECT_EQ(shown->text(), "CR LF");
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "int a;\r\nint b;\r\nint c;\r\n");
    Press("Ctrl+Z");
    EXPECT_EQ(shown->text(), "LF, mixed");
}

TEST_F(TextMenus, MarkLinesThatTheSessionKeeps)
{
    const std::string file = home.Write("a.c", "int a;\nint b;\nint c;\n");
    Start({file});
    View().GoToLine(2);
    Press("Ctrl+F2");
    View().GoToLine(1);
    Press("Alt+PgDown");
    EXPECT_EQ(View().Caret(), 7);
    ASSERT_TRUE(Quit());
    Start();
    EXPECT_EQ(View().Bookmarks(), std::vector<long>{1});
}
