#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QTabBar>
#include <QTest>

#include <filesystem>

using ::testing::ElementsAre;

namespace {

class TabRow : public EditorStory {
protected:
    void StartWithFour()
    {
        Start({home.Write("a.h", "int a;\n"), home.Write("b.h", "int b;\n"), home.Write("c.h", "int c;\n"),
               home.Write("d.h", "int d;\n")});
    }

    wren::EditorTabs& Row() { return TheEditor().Window().Tabs(); }
    wren::TabActions& Actions() { return TheEditor().Actions().tabs; }
    long DocumentIn(int index) { return Row().Documents().at(static_cast<size_t>(index)); }
    QPoint Middle(int index) { return Row().tabBar()->tabRect(index).center(); }

    std::vector<std::string> EnabledItems(int index)
    {
        QMenu menu;
        Actions().FillMenu(&menu, DocumentIn(index));
        std::vector<std::string> items;
        for (const QAction* action : menu.actions())
            if (action->isEnabled() && !action->isSeparator())
                items.push_back(action->text().remove('&').toStdString());
        return items;
    }
};

} // namespace

TEST_F(TabRow, KeepsTheTabThatWasAskedForWhenTheOthersClose)
{
    StartWithFour();
    Actions().CloseOthers(DocumentIn(1));
    Settle();
    EXPECT_THAT(Tabs(), ElementsAre("b.h"));
    EXPECT_EQ(Text(), "int b;\n");
}

TEST_F(TabRow, KeepsTheTabsOnTheLeftWhenThoseOnTheRightClose)
{
    StartWithFour();
    Actions().CloseToTheRight(DocumentIn(1));
    Settle();
    EXPECT_THAT(Tabs(), ElementsAre("a.h", "b.h"));
    EXPECT_EQ(CurrentTab(), "b.h");
}

TEST_F(TabRow, StopsClosingAtATextThatTheUserKeeps)
{
    StartWithFour();
    Row().setCurrentIndex(1);
    Type("x");
    hands.AnswerNextAlert("Cancel");
    Actions().CloseOthers(DocumentIn(3));
    Settle();
    EXPECT_THAT(Tabs(), ElementsAre("b.h *", "c.h", "d.h"));
    Row().setCurrentIndex(0);
    Press("Ctrl+Z");
}

TEST_F(TabRow, ClosesTheTabThatTheMiddleButtonClicks)
{
    StartWithFour();
    QTest::mouseClick(Row().tabBar(), Qt::MiddleButton, {}, Middle(2));
    Settle();
    EXPECT_THAT(Tabs(), ElementsAre("a.h", "b.h", "d.h"));
    EXPECT_EQ(CurrentTab(), "d.h");
}

TEST_F(TabRow, KeepsTheTabThatTheMiddleButtonLeaves)
{
    StartWithFour();
    QTest::mousePress(Row().tabBar(), Qt::MiddleButton, {}, Middle(2));
    QTest::mouseRelease(Row().tabBar(), Qt::MiddleButton, {}, Middle(1));
    Settle();
    EXPECT_EQ(Tabs().size(), 4u);
}

TEST_F(TabRow, ReopensClosedFilesFromTheLastWithTheirCarets)
{
    StartWithFour();
    View().GoTo(4);
    Press("Ctrl+W");
    CloseTab(0);
    Press("Ctrl+Shift+T");
    EXPECT_EQ(CurrentTab(), "a.h");
    Press("Ctrl+Shift+T");
    EXPECT_EQ(CurrentTab(), "d.h");
    EXPECT_EQ(View().Caret(), 4);
    EXPECT_FALSE(Actions().CanReopen());
}

TEST_F(TabRow, SkipsAClosedFileThatIsOpenAgain)
{
    StartWithFour();
    CloseTab(0);
    CloseTab(0);
    TheEditor().Actions().documents.Open(home / "b.h");
    Press("Ctrl+Shift+T");
    EXPECT_EQ(CurrentTab(), "a.h");
    EXPECT_THAT(Tabs(), ElementsAre("c.h", "d.h", "b.h", "a.h"));
}

TEST_F(TabRow, CopiesThePathOfAFile)
{
    StartWithFour();
    QApplication::clipboard()->setText("before");
    Actions().CopyPath(DocumentIn(1));
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), home / "b.h");
}

TEST_F(TabRow, OffersOnlyWhatATabCanDo)
{
    Start({home.Write("a.h", "")});
    EXPECT_THAT(EnabledItems(0), ElementsAre("Close", "Copy Path"));
    Press("Ctrl+N");
    EXPECT_THAT(EnabledItems(0), ElementsAre("Close", "Close Others", "Close to the Right", "Copy Path"));
    EXPECT_THAT(EnabledItems(1), ElementsAre("Close", "Close Others"));
    CloseTab(0);
    EXPECT_THAT(EnabledItems(0), ElementsAre("Close", "Reopen Closed File"));
}

TEST_F(TabRow, ShowsWholeNamesWhenThereAreMoreThanFit)
{
    std::vector<std::string> files;
    for (int number = 100; number < 130; ++number)
        files.push_back(home.Write("source" + std::to_string(number) + ".c", ""));
    Start(files);
    const QTabBar* bar = Row().tabBar();
    ASSERT_GT(bar->tabRect(29).right() - bar->tabRect(0).left(), Row().width()) << "else all of them fit";
    for (int index = 0; index < 30; ++index)
        EXPECT_GT(bar->tabRect(index).width(), bar->fontMetrics().horizontalAdvance(bar->tabText(index))) << index;
}
