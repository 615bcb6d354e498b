#include "tests/desktop/editorwindow/MeaningsStory.h"
#include "wren/desktop/FilesActions.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/files/FilesPanel.h"
#include "wren/desktop/symbols/OutlinePanel.h"

#include <QLineEdit>
#include <QTest>
#include <QToolButton>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class FilesOfTheProject : public MeaningsStory {
protected:
    FilesOfTheProject()
    {
        home.Write("project/.gitignore", "*.o\n");
        home.Write("project/shapes.o", "");
        home.Write("project/parts/wheel.c", "int wheel;\n");
        home.Write("project/parts/deep/axle.c", "int axle;\n");
    }
    void Open(const std::string& file)
    {
        Start({home / file});
        Press("Ctrl+Shift+E");
        Answered();
    }
    wren::FilesPanel& Panel() { return TheEditor().Actions().files->Panel(); }
    QLineEdit& Field() { return *Panel().findChild<QLineEdit*>(); }
    void InPanel(const char* keys)
    {
        QTest::keySequence(&Field(), QKeySequence(keys));
        Answered();
    }
    void TypeInPanel(const char* letters)
    {
        QTest::keyClicks(&Field(), letters);
        Answered();
    }
    std::vector<std::string> Names()
    {
        std::vector<std::string> names;
        for (int row = 0; row < Panel().Whole().rowCount(); ++row)
            names.push_back(Panel().Whole().index(row, 0).data().toString().toStdString());
        return names;
    }
};

} // namespace

TEST_F(FilesOfTheProject, AreListedWithTheTextMarked)
{
    Open("project/parts/deep/axle.c");
    EXPECT_TRUE(Panel().isVisible());
    EXPECT_THAT(Panel().windowTitle().toStdString(), HasSubstr("project"));
    EXPECT_THAT(Names(), ElementsAre("parts", ".gitignore", "shapes.cpp", "shapes.h"));
    EXPECT_EQ(Panel().Marked(), "parts/deep/axle.c");
}

TEST_F(FilesOfTheProject, ShareTheirHeightWithTheOutline)
{
    Open("project/parts/wheel.c");
    Press("Ctrl+Shift+L");
    Answered();
    const int outline = Symbols().Outlines().Panel().height();
    EXPECT_NEAR(Panel().height(), outline, 2);
    EXPECT_GT(outline, TheEditor().Window().height() / 4);
}

TEST_F(FilesOfTheProject, OpenByKeysAndGiveTheKeyboardBack)
{
    Open("project/parts/wheel.c");
    EXPECT_TRUE(Field().hasFocus());
    InPanel("Down");
    EXPECT_EQ(Panel().Marked(), ".gitignore");
    InPanel("Down");
    InPanel("Down");
    InPanel("Return");
    EXPECT_EQ(CurrentTab(), "shapes.h");
    EXPECT_TRUE(View().hasFocus());
    Press("Alt+Left");
    EXPECT_EQ(CurrentTab(), "wheel.c") << "as from every other jump";
    Answered();
    EXPECT_EQ(Panel().Marked(), "parts/wheel.c");
}

TEST_F(FilesOfTheProject, DirectoriesOpenAndCloseByKeys)
{
    Open("project/shapes.h");
    InPanel("Home");
    EXPECT_EQ(Panel().Marked(), "parts");
    EXPECT_THAT(Panel().Whole().ReadDirectories(), ElementsAre("")) << "it was not needed yet";
    InPanel("Return");
    InPanel("Down");
    EXPECT_EQ(Panel().Marked(), "parts/deep");
    InPanel("Up");
    InPanel("Left");
    InPanel("Down");
    EXPECT_EQ(Panel().Marked(), ".gitignore");
}

TEST_F(FilesOfTheProject, AreNarrowedByTyping)
{
    Open("project/shapes.h");
    TypeInPanel("EL.c");
    EXPECT_EQ(Panel().Marked(), "parts/wheel.c");
    InPanel("Escape");
    EXPECT_TRUE(Panel().Letters().empty());
    EXPECT_EQ(Panel().Marked(), "shapes.h");
    TypeInPanel("parts/");
    EXPECT_EQ(Panel().Marked(), "parts/deep/axle.c");
    InPanel("Down");
    InPanel("Return");
    EXPECT_EQ(CurrentTab(), "wheel.c");
    Press("Ctrl+Shift+E");
    Press("Ctrl+Shift+E");
    InPanel("Escape");
    InPanel("Escape");
    EXPECT_TRUE(View().hasFocus());
}

TEST_F(FilesOfTheProject, IgnoredOnesAreShownOnRequest)
{
    Open("project/shapes.h");
    EXPECT_THAT(Names(), Not(Contains("shapes.o")));
    Panel().findChild<QToolButton*>()->click();
    Answered();
    EXPECT_THAT(Names(), ElementsAre(".git", "parts", ".gitignore", "shapes.cpp", "shapes.h", "shapes.o"));
    Panel().findChild<QToolButton*>()->click();
    Answered();
    EXPECT_THAT(Names(), Not(Contains("shapes.o")));
}

TEST_F(FilesOfTheProject, IgnoredOnesAreFoundByTypingOnRequest)
{
    Open("project/shapes.h");
    TypeInPanel("shapes.o");
    EXPECT_EQ(Panel().Marked(), "");
    Panel().findChild<QToolButton*>()->click();
    Answered();
    EXPECT_EQ(Panel().Marked(), "shapes.o");
    Panel().findChild<QToolButton*>()->click();
    Answered();
    EXPECT_EQ(Panel().Marked(), "");
}

TEST_F(FilesOfTheProject, FollowTheTextIntoAnotherProject)
{
    home.Write("other/.git/HEAD", "ref: refs/heads/main\n");
    home.Write("other/one.c", "");
    Open("project/shapes.h");
    TheEditor().Actions().documents.Open(home / "other/one.c");
    Answered();
    EXPECT_THAT(Names(), ElementsAre("one.c"));
    EXPECT_EQ(Panel().Marked(), "one.c");
    TheEditor().Actions().documents.New();
    Answered();
    EXPECT_THAT(Names(), ElementsAre("one.c")) << "a text without a file changes nothing";
}

TEST_F(FilesOfTheProject, AreReadAgainWhenTheUserComesBack)
{
    Open("project/shapes.h");
    home.Write("project/new.c", "");
    ComeBack();
    Answered();
    EXPECT_THAT(Names(), Contains("new.c"));
    EXPECT_EQ(Panel().Marked(), "shapes.h");
}

TEST_F(FilesOfTheProject, ComeBackWithTheNextStart)
{
    Open("project/shapes.h");
    TheEditor().Window().resize(1200, 700);
    TheEditor().Window().addDockWidget(Qt::RightDockWidgetArea, &Panel());
    TheEditor().Window().resizeDocks({&Panel()}, {333}, Qt::Horizontal);
    Settle();
    const int width = Panel().width();
    ASSERT_TRUE(Quit());
    Start();
    Answered();
    EXPECT_TRUE(Panel().isVisible());
    EXPECT_EQ(TheEditor().Window().dockWidgetArea(&Panel()), Qt::RightDockWidgetArea);
    EXPECT_EQ(Panel().width(), width);
    EXPECT_EQ(Panel().Marked(), "shapes.h");
    EXPECT_TRUE(View().hasFocus());
    Press("Ctrl+Shift+E");
    ASSERT_TRUE(Quit());
    Start();
    EXPECT_FALSE(Panel().isVisible());
}

// The session may be stored once more while the editor ends.
TEST_F(FilesOfTheProject, CountAsOpenInAWindowThatIsClosed)
{
    Open("project/shapes.h");
    ASSERT_TRUE(Panel().isVisible());
    TheEditor().Window().hide();
    EXPECT_THAT(TheEditor().Window().OpenPanels(), Contains("files"));
    TheEditor().Window().show();
    Press("Ctrl+Shift+E");
    EXPECT_THAT(TheEditor().Window().OpenPanels(), Not(Contains("files")));
}

TEST_F(FilesOfTheProject, AreWideEnoughWhenAFolderIsFirstOpened)
{
    folder = home / "project/parts";
    Start();
    Answered();
    EXPECT_GE(Panel().width(), Panel().sizeHint().width());
}

TEST_F(FilesOfTheProject, AFolderHasItsOwnTextsAndShowsItsFiles)
{
    Open("project/shapes.h");
    Press("Ctrl+Shift+E");
    ASSERT_TRUE(Quit());
    folder = home / "project/parts";
    Start();
    Answered();
    EXPECT_THAT(Tabs(), ElementsAre("untitled"));
    EXPECT_THAT(Names(), ElementsAre("deep", "wheel.c"));
    TheEditor().Actions().documents.Open(home / "project/parts/wheel.c");
    Answered();
    EXPECT_EQ(Panel().Marked(), "wheel.c");
    TheEditor().Actions().documents.Open(home / "project/shapes.cpp");
    Answered();
    EXPECT_THAT(Names(), ElementsAre("deep", "wheel.c")) << "a text from elsewhere";
    ASSERT_TRUE(Quit());
    folder.clear();
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("shapes.h"));
    ASSERT_TRUE(Quit());
    folder = home / "project/parts";
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("wheel.c", "shapes.cpp"));
    EXPECT_TRUE(Panel().isVisible());
}

TEST_F(FilesOfTheProject, TheMenuShowsWhetherTheyAreThere)
{
    Open("project/shapes.h");
    EXPECT_TRUE(Panel().isVisible());
    Press("Ctrl+Shift+E");
    EXPECT_FALSE(Panel().isVisible());
    EXPECT_TRUE(View().hasFocus());
}
