// Running commands by letters of their names.
#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/symbols/Palette.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QTest>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

class Commands : public EditorStory {
protected:
    wren::Palette& List() { return *TheEditor().Window().findChild<wren::Palette*>("commands"); } // made by the key
    QLineEdit& Field() { return *List().findChild<QLineEdit*>(); }
    // What is offered for the letters, "menu: name|keys".
    std::vector<std::string> Offered(const char* letters)
    {
        Press("Ctrl+Shift+P");
        QTest::keyClicks(&Field(), letters);
        std::vector<std::string> offered;
        for (const wren::PaletteItem& item : List().Items())
            offered.push_back(item.name + "|" + item.where);
        return offered;
    }
    void Run(const char* letters)
    {
        Offered(letters);
        QTest::keyClick(&Field(), Qt::Key_Return);
        Settle();
    }
};

} // namespace

TEST_F(Commands, AFewLettersRunOneAndTheTextHasTheKeyboardAgain)
{
    Start({home.Write("a.c", "int a;\n")});
    Run("dupl");
    EXPECT_EQ(Text(), "int a;\nint a;\n");
    EXPECT_FALSE(List().isVisible());
    Type("x");
    EXPECT_THAT(Text(), StartsWith("x"));
}

TEST_F(Commands, KeysStandBesideTheNames)
{
    Start({home.Write("a.c", "int a;\n")});
    EXPECT_THAT(Offered("go to line"), Contains("Go: Go to Line|Ctrl+L"));
}

TEST_F(Commands, ANameCountsMoreThanItsMenu)
{
    Start({home.Write("a.c", "int a;\n")});
    EXPECT_THAT(Offered("find").front(), StartsWith("Search: Find"));
    EXPECT_THAT(Offered("book next").front(), StartsWith("Bookmarks: Next"));
}

TEST_F(Commands, WhatCannotBeDoneNowIsNotOffered)
{
    Start({home.Write("a.c", "int a;\n")});
    EXPECT_THAT(Offered("edit: undo"), IsEmpty());
    QTest::keyClick(&Field(), Qt::Key_Escape);
    Type("x");
    EXPECT_THAT(Offered("edit: undo"), ElementsAre(StartsWith("Edit: Undo|")));
}

TEST_F(Commands, WhatWasRunLastComesFirst)
{
    Start({home.Write("a.c", "int a;\n")});
    EXPECT_THAT(Offered("").front(), Not(StartsWith("Lines: Join")));
    QTest::keyClick(&Field(), Qt::Key_Escape);
    Run("join");
    EXPECT_THAT(Offered("").front(), StartsWith("Lines: Join"));
}

TEST_F(Commands, ThePluginsAreAmongThem)
{
    Start({home.Write("a.c", "int a;\n")});
    EXPECT_THAT(Offered("look up dec"), Contains(StartsWith("Search: Look up declaration|")));
}

TEST_F(Commands, AScreenReaderHearsTheNameAndTheKeys)
{
    Start({home.Write("a.c", "int a;\n")});
    Offered("go to line");
    const QAbstractItemModel& rows = *List().findChild<QListView*>()->model();
    EXPECT_EQ(rows.data(rows.index(0, 0), Qt::AccessibleTextRole).toString().simplified(), "Go: Go to Line Ctrl+L");
}
