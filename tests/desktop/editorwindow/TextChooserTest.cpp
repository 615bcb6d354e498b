#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/TextSwitcher.h"
#include "wren/desktop/symbols/Palette.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QTabBar>
#include <QTest>
#include <QToolButton>
#include <QWindow>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class OpenDocuments : public EditorStory {
protected:
    void StartWithThree()
    {
        Start({home.Write("a.h", "int a;\n"), home.Write("b.h", "int b;\n"), home.Write("deep/c.h", "int c;\n")});
    }
    wren::TextChooser& Texts() { return TheEditor().Actions().texts; }

    // Through the window, as the desktop sends them: only then are modifiers known to be held.
    QWindow* Keyboard() { return TheEditor().Window().windowHandle(); }
    void Hold(Qt::Key key, Qt::KeyboardModifiers held)
    {
        QTest::keyPress(Keyboard(), key, held);
        QTest::keyRelease(Keyboard(), key); // with modifiers it would release those too
        Settle();
    }
    void LetGo(Qt::Key modifier)
    {
        QTest::keyRelease(Keyboard(), modifier, Qt::NoModifier);
        Settle();
    }
    void Tap() // Control-Tab, and lets go
    {
        Hold(Qt::Key_Tab, Qt::ControlModifier);
        LetGo(Qt::Key_Control);
    }
    std::string Marked() // in the list by last use; "" while it is closed
    {
        const wren::TextSwitcher& list = Texts().Switcher();
        return list.isVisible() ? list.Items().at(static_cast<size_t>(list.Marked())).name : "";
    }
    std::vector<std::string> Listed()
    {
        std::vector<std::string> names;
        for (const wren::PaletteItem& item : Texts().Listing().Items())
            names.push_back(item.name);
        return names;
    }
    void TypeInList(const char* letters)
    {
        QTest::keyClicks(QApplication::focusWidget(), letters);
        Settle();
    }
};

} // namespace

TEST_F(OpenDocuments, ControlTabSwapsTheLastTwo)
{
    StartWithThree();
    EXPECT_EQ(CurrentTab(), "c.h");
    Tap();
    EXPECT_EQ(CurrentTab(), "b.h");
    EXPECT_TRUE(View().hasFocus());
    Tap();
    EXPECT_EQ(CurrentTab(), "c.h");
}

TEST_F(OpenDocuments, AreWalkedByLastUseWhileControlIsHeld)
{
    StartWithThree();
    Press("Ctrl+PgUp");
    EXPECT_EQ(CurrentTab(), "b.h");
    Hold(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(Marked(), "c.h");
    EXPECT_EQ(CurrentTab(), "b.h") << "nothing is raised on the way";
    Hold(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(Marked(), "a.h");
    Hold(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(Marked(), "b.h") << "it goes round";
    Hold(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Marked(), "a.h");
    LetGo(Qt::Key_Shift);
    EXPECT_EQ(Marked(), "a.h") << "Shift only chose the way";
    LetGo(Qt::Key_Control);
    EXPECT_EQ(Marked(), "");
    EXPECT_EQ(CurrentTab(), "a.h");
    EXPECT_THAT(Tabs(), ElementsAre("a.h", "b.h", "c.h")) << "the tabs keep their order";
}

TEST_F(OpenDocuments, ControlShiftTabBeginsAtTheOneUsedLeast)
{
    StartWithThree();
    Hold(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Marked(), "a.h");
    LetGo(Qt::Key_Control);
    EXPECT_EQ(CurrentTab(), "a.h");
}

TEST_F(OpenDocuments, EscapeLeavesTheTextThatIsThere)
{
    StartWithThree();
    Hold(Qt::Key_Tab, Qt::ControlModifier);
    Hold(Qt::Key_Escape, Qt::ControlModifier);
    EXPECT_EQ(Marked(), "");
    LetGo(Qt::Key_Control);
    EXPECT_EQ(CurrentTab(), "c.h");
    EXPECT_TRUE(View().hasFocus());
}

TEST_F(OpenDocuments, AClickInTheListChooses)
{
    StartWithThree();
    Hold(Qt::Key_Tab, Qt::ControlModifier);
    auto* list = qobject_cast<QAbstractItemView*>(QApplication::focusWidget());
    ASSERT_NE(list, nullptr);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(2, 0)).center());
    Settle();
    EXPECT_EQ(CurrentTab(), "a.h");
}

TEST_F(OpenDocuments, AreTypedIntoNeitherByTheKeysOfTheList)
{
    StartWithThree();
    Hold(Qt::Key_Tab, Qt::ControlModifier);
    Hold(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(Marked(), "b.h");
    LetGo(Qt::Key_Control);
    EXPECT_EQ(Text(), "int b;\n");
}

TEST_F(OpenDocuments, AMenuSwapsAtOnceAsNothingIsHeld)
{
    StartWithThree();
    Choose("Go", "Last Used Document");
    EXPECT_EQ(CurrentTab(), "b.h");
    Choose("Go", "Least Recently Used Document");
    EXPECT_EQ(CurrentTab(), "a.h");
}

TEST_F(OpenDocuments, OneAloneHasNoList)
{
    Start({home.Write("a.h", "int a;\n")});
    Tap();
    EXPECT_EQ(CurrentTab(), "a.h");
    EXPECT_EQ(Marked(), "");
}

TEST_F(OpenDocuments, ClosedOnesAreForgotten)
{
    StartWithThree();
    CloseTab(1);
    EXPECT_THAT(Texts().ByLastUse(), SizeIs(2));
    Tap();
    EXPECT_EQ(CurrentTab(), "a.h");
}

TEST_F(OpenDocuments, AreListedWithTheirDirectoriesAndWhatIsUnsaved)
{
    StartWithThree();
    Type("x");
    Press("Ctrl+N");
    Press("Ctrl+E");
    const std::vector<wren::PaletteItem>& items = Texts().Listing().Items();
    ASSERT_THAT(Listed(), ElementsAre("untitled", "c.h", "b.h", "a.h"));
    EXPECT_EQ(items[0].where, "");
    EXPECT_EQ(items[1].where, "~/deep");
    EXPECT_EQ(items[1].detail, "*");
    EXPECT_EQ(items[2].where, "~");
    EXPECT_EQ(items[2].detail, "");
    TypeInList("c.h");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    Settle();
    Press("Ctrl+Z");
}

TEST_F(OpenDocuments, AreFoundByAFewLettersAmongFifty)
{
    std::vector<std::string> files;
    for (int number = 100; number < 150; ++number)
        files.push_back(home.Write("source" + std::to_string(number) + ".c", ""));
    Start(files);
    auto* button = TheEditor().Window().findChild<QToolButton*>("listOfTexts");
    ASSERT_NE(button, nullptr);
    ASSERT_TRUE(button->isVisible());
    EXPECT_FALSE(button->accessibleName().isEmpty());
    button->click();
    Settle();
    EXPECT_THAT(Listed(), SizeIs(50));
    TypeInList("117");
    EXPECT_THAT(Listed(), ElementsAre("source117.c"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    Settle();
    EXPECT_EQ(CurrentTab(), "source117.c");
    EXPECT_TRUE(View().hasFocus());
    const QTabBar* bar = TheEditor().Window().Tabs().tabBar();
    EXPECT_TRUE(bar->rect().contains(bar->tabRect(17))) << "its tab has scrolled into view";
}

TEST_F(OpenDocuments, EscapeClosesTheListWithoutAChoice)
{
    StartWithThree();
    Press("Ctrl+E");
    TypeInList("zzz");
    EXPECT_THAT(Listed(), IsEmpty());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    Settle();
    EXPECT_EQ(CurrentTab(), "c.h");
    EXPECT_TRUE(View().hasFocus());
}
