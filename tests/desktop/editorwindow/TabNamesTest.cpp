#include "tests/desktop/editorwindow/EditorStory.h"
#include "tests/support/OrdinaryRights.h"
#include "wren/desktop/MainWindow.h"

#include <filesystem>

using ::testing::ElementsAre;

namespace {

class TabNames : public EditorStory {
protected:
    std::string Title() { return TheEditor().Window().windowTitle().toStdString(); }
};

} // namespace

TEST_F(TabNames, ShowTheDirectoryWhenTwoFilesHaveTheSameName)
{
    Start({home.Write("src/x.h", ""), home.Write("y.h", "")});
    EXPECT_THAT(Tabs(), ElementsAre("x.h", "y.h"));
    TheEditor().Actions().documents.Open(home.Write("include/x.h", ""));
    Settle();
    EXPECT_THAT(Tabs(), ElementsAre("x.h (src)", "y.h", "x.h (include)"));
    EXPECT_EQ(Title(), "x.h[*] (~/include) - Wren");
    CloseTab(0);
    EXPECT_THAT(Tabs(), ElementsAre("y.h", "x.h"));
    EXPECT_EQ(Title(), "x.h[*] (~/include) - Wren");
}

TEST_F(TabNames, ShowOnlyTheDifferingPartOfTheDirectory)
{
    Start({home.Write("a/src/x.h", ""), home.Write("b/src/x.h", ""), home.Write("b/x.h", ""), home.Write("x.h", "")});
    const std::string own = std::filesystem::path(home.Path()).filename();
    EXPECT_THAT(Tabs(), ElementsAre("x.h (a/src)", "x.h (b/src)", "x.h (b)", "x.h (" + own + ")"));
    Type("1");
    EXPECT_EQ(CurrentTab(), "x.h (" + own + ") *") << "unsaved";
    Press("Ctrl+Z");
}

TEST_F(TabNames, StayPlainForTextsWithoutFiles)
{
    Start();
    Press("Ctrl+N");
    EXPECT_THAT(Tabs(), ElementsAre("untitled", "untitled"));
    EXPECT_EQ(Title(), "Wren");
}

TEST_F(TabNames, ChangeWithTheFilesName)
{
    Start({home.Write("src/x.h", ""), home.Write("y.h", "")});
    hands.AnswerNextPanel(home / "x.h");
    Choose("File", "Save As\u2026");
    const std::string own = std::filesystem::path(home.Path()).filename();
    EXPECT_THAT(Tabs(), ElementsAre("x.h (src)", "x.h (" + own + ")"));
    EXPECT_EQ(Title(), "x.h[*] (~) - Wren");
}

TEST_F(TabNames, TheTitleShowsUnsavedChangesAndFilesThatCannotBeWritten)
{
    const std::string file = home.Write("src/x.h", "");
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    const OrdinaryRights rights;
    Start({file});
    EXPECT_EQ(Title(), "x.h[*] (~/src, read-only) - Wren");
    EXPECT_FALSE(TheEditor().Window().isWindowModified());
    Type("1");
    EXPECT_TRUE(TheEditor().Window().isWindowModified());
    Press("Ctrl+N");
    EXPECT_EQ(Title(), "Wren");
    EXPECT_FALSE(TheEditor().Window().isWindowModified());
    Press("Ctrl+PgUp");
    EXPECT_TRUE(TheEditor().Window().isWindowModified());
    Press("Ctrl+Z");
    EXPECT_FALSE(TheEditor().Window().isWindowModified());
}
