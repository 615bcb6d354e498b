#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/core/Host.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/state/SessionState.h"

#include <QTabBar>

#include <filesystem>

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class Session : public EditorStory {
protected:
    Session()
    {
        for (const char* name : {"a.c", "b.c", "c.c"})
            files.push_back(home.Write(name, std::string("of ") + name + "\n"));
    }
    std::vector<std::string> files;
};

} // namespace

TEST_F(Session, RestoresTabsCaretsAndTheCurrentText)
{
    Start(files);
    View().GoTo(7);
    Press("Ctrl+PgUp");
    View().GoTo(3);
    ASSERT_TRUE(Quit());

    Start();
    EXPECT_THAT(Tabs(), ElementsAre("a.c", "b.c", "c.c"));
    EXPECT_EQ(CurrentTab(), "b.c");
    EXPECT_EQ(Text(), "of b.c\n");
    EXPECT_EQ(View().Caret(), 3);
    Press("Ctrl+PgDown");
    EXPECT_EQ(View().Caret(), 7);
}

TEST_F(Session, KeepsTheOrderOfDraggedTabs)
{
    Start(files);
    TheEditor().Window().Tabs().tabBar()->moveTab(0, 2);
    ASSERT_THAT(Tabs(), ElementsAre("b.c", "c.c", "a.c"));
    ASSERT_TRUE(Quit());
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("b.c", "c.c", "a.c"));
    EXPECT_EQ(CurrentTab(), "c.c") << "the last one opened";
}

TEST_F(Session, RestoresTheVisibleLines)
{
    std::string lines;
    for (int line = 0; line < 500; ++line)
        lines += "line\n";
    Start({home.Write("long.c", lines)});
    View().ShowFromLine(250);
    ASSERT_EQ(View().FirstVisibleLine(), 250);
    ASSERT_TRUE(Quit());
    Start();
    EXPECT_EQ(View().FirstVisibleLine(), 250);
    EXPECT_EQ(View().Caret(), 0);
}

TEST_F(Session, LeavesOutMissingFiles)
{
    Start(files);
    ASSERT_TRUE(Quit());
    fs::remove(files[1]);
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("a.c", "c.c"));
    EXPECT_EQ(CurrentTab(), "c.c");
}

TEST_F(Session, PutsTheCaretAtTheEndOfAShorterText)
{
    Start({files[0]});
    View().GoTo(7);
    ASSERT_TRUE(Quit());
    home.Write("a.c", "of");
    Start();
    EXPECT_EQ(View().Caret(), 2);
}

TEST_F(Session, IsNotRestoredWhenFilesAreNamed)
{
    Start({files[0], files[1]});
    ASSERT_TRUE(Quit());
    Start({files[2]});
    EXPECT_THAT(Tabs(), ElementsAre("c.c"));
}

TEST_F(Session, IsNotReplacedByNamedFiles)
{
    Start({files[0], files[1]});
    ASSERT_TRUE(Quit());
    Start({files[2]});
    ASSERT_TRUE(Quit());
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("a.c", "b.c"));
    EXPECT_THAT(TheEditor().RecentFiles(), ElementsAre(files[2], files[1], files[0]));
}

TEST_F(Session, LeavesTheOrderOfRecentFilesAloneWhenItIsRestored)
{
    Start(files);
    Press("Ctrl+W");
    TheEditor().Actions().documents.Open(files[0]);
    ASSERT_TRUE(Quit());
    for (int start = 0; start < 2; ++start) {
        Start();
        EXPECT_THAT(Tabs(), ElementsAre("a.c", "b.c"));
        EXPECT_THAT(TheEditor().RecentFiles(), ElementsAre(files[0], files[2], files[1]));
        ASSERT_TRUE(Quit());
    }
}

TEST_F(Session, IsStoredWhileFilesAreOpenedAndClosed)
{
    Start({files[0]});
    Until([] { return wren::LoadSession().files.size() == 1; });
    TheEditor().Actions().documents.Open(files[1]);
    Until([] { return wren::LoadSession().files.size() == 2; });
    EXPECT_EQ(wren::LoadSession().current, 1);
    TheEditor().Window().Tabs().tabBar()->moveTab(0, 1);
    Until([&] { return wren::LoadSession().files[0].path == files[1]; });
    Press("Ctrl+W");
    Until([] { return wren::LoadSession().files.size() == 1; });
    EXPECT_THAT(wren::LoadSession().recentFiles, ElementsAre(files[1], files[0]));
}

TEST_F(Session, IsNotReplacedWhileNamedFilesAreOpenedAndClosed)
{
    Start({files[0]});
    ASSERT_TRUE(Quit());
    Start({files[1]});
    TheEditor().Actions().documents.Open(files[2]);
    Until([&] { return wren::LoadSession().recentFiles.front() == files[2]; });
    EXPECT_EQ(wren::LoadSession().files.size(), 1u);
    EXPECT_EQ(wren::LoadSession().files.front().path, files[0]);
}

TEST_F(Session, KeepsTheRecentFilesOfAnotherEditor)
{
    Start({files[0]});
    wren::SessionState another;
    another.Opened(files[1]);
    std::string error;
    ASSERT_TRUE(wren::SaveSession(another, &error)) << error;
    ASSERT_TRUE(Quit());
    EXPECT_THAT(wren::LoadSession().recentFiles, ElementsAre(files[0], files[1]));
}

TEST_F(Session, IsNotRestoredWhenThePreferencesForbidIt)
{
    home.Write(".config/wren/settings", "WrenRestoreSession off\n");
    Start(files);
    ASSERT_TRUE(Quit());
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("untitled"));
}

TEST_F(Session, RestoresTheWorksheetAsAWorksheet)
{
    Start({files[0]});
    Press("Ctrl+Shift+W");
    Type("echo hello");
    ASSERT_TRUE(Quit());
    EXPECT_THAT(hands.TakeHeard(), IsEmpty()) << "it is kept without a question";

    Start();
    EXPECT_THAT(Tabs(), ElementsAre("a.c", "Worksheet"));
    EXPECT_EQ(CurrentTab(), "Worksheet");
    EXPECT_EQ(Text(), "echo hello");
    EXPECT_TRUE(TheEditor().TheHost().Current()->IsWorksheet());
}

TEST_F(Session, IsEmptyAtTheStartWhenItsFileIsDamaged)
{
    home.Write(".local/state/wren/session.json", "{\"files\": [{\"path\": 7}");
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("untitled"));
    EXPECT_THAT(Notice(), IsEmpty());
}
