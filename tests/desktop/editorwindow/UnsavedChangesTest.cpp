#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/desktop/MainWindow.h"

#include <QAction>
#include <QToolBar>

#include <filesystem>

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

class UnsavedChanges : public EditorStory {
protected:
    void StartWithAChange()
    {
        file = home.Write("a.c", "old\n");
        Start({file});
        Type("new ");
    }
    QAction* Tool(const char* name)
    {
        for (QAction* action : TheEditor().Window().Tools().actions())
            if (action->text().remove('&') == name)
                return action;
        return nullptr;
    }
    std::string file;
};

} // namespace

TEST_F(UnsavedChanges, AreMarkedInTheTabAndAskedAboutByItsCloseButton)
{
    StartWithAChange();
    EXPECT_THAT(Tabs(), ElementsAre("a.c *"));
    hands.AnswerNextAlert("Save");
    CloseTab(0);
    EXPECT_THAT(hands.TakeHeard(), ElementsAre("Save the changes to a.c?"));
    EXPECT_EQ(Content(file), "new old\n");
    EXPECT_THAT(Tabs(), ElementsAre("untitled"));
}

TEST_F(UnsavedChanges, PartlyUndoneChangesCanBeRedoneFromTheToolBar)
{
    StartWithAChange();
    Press("End");
    Type("er");
    EXPECT_FALSE(Tool("Redo")->isEnabled());
    Tool("Undo")->trigger();
    EXPECT_EQ(Text(), "new old\n");
    ASSERT_TRUE(Tool("Redo")->isEnabled());
    Tool("Redo")->trigger();
    EXPECT_EQ(Text(), "new older\n");
    EXPECT_FALSE(Tool("Redo")->isEnabled());
}

TEST_F(UnsavedChanges, AreLostWhenDiscarded)
{
    StartWithAChange();
    hands.AnswerNextAlert("Discard");
    Press("Ctrl+W");
    EXPECT_EQ(Content(file), "old\n");
    EXPECT_THAT(Tabs(), ElementsAre("untitled"));
}

TEST_F(UnsavedChanges, StayWhenClosingIsCancelled)
{
    StartWithAChange();
    hands.AnswerNextAlert("Cancel");
    Press("Ctrl+W");
    EXPECT_EQ(Content(file), "old\n");
    EXPECT_THAT(Tabs(), ElementsAre("a.c *"));
    EXPECT_EQ(Text(), "new old\n");
}

TEST_F(UnsavedChanges, AreGoneOnceUndone)
{
    StartWithAChange();
    Press("Ctrl+Z");
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
    Press("Ctrl+W");
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
}

TEST_F(UnsavedChanges, AreAskedAboutTabByTabOnQuit)
{
    StartWithAChange();
    const std::string second = home.Write("b.c", "old\n");
    TheEditor().Actions().documents.Open(second);
    Type("also ");
    hands.AnswerNextAlert("Save");
    hands.AnswerNextAlert("Discard");
    EXPECT_TRUE(Quit());
    EXPECT_THAT(hands.TakeHeard(), ElementsAre("Save the changes to a.c?", "Save the changes to b.c?"));
    EXPECT_EQ(Content(file), "new old\n");
    EXPECT_EQ(Content(second), "old\n");
}

TEST_F(UnsavedChanges, KeepTheEditorOpenWhenQuittingIsCancelled)
{
    StartWithAChange();
    TheEditor().Actions().documents.New();
    hands.AnswerNextAlert("Cancel");
    EXPECT_FALSE(Quit());
    EXPECT_EQ(CurrentTab(), "a.c *") << "the text that was asked about";
    EXPECT_EQ(Text(), "new old\n");
    hands.AnswerNextAlert("Discard");
    EXPECT_TRUE(Quit());
    EXPECT_EQ(Content(file), "old\n");
}

TEST_F(UnsavedChanges, AreSavedToANewFileWhenThereIsNone)
{
    Start();
    Type("int a;\n");
    EXPECT_THAT(Tabs(), ElementsAre("untitled *"));
    hands.AnswerNextPanel(home / "new.c");
    Press("Ctrl+S");
    EXPECT_EQ(Content(home / "new.c"), "int a;\n");
    EXPECT_THAT(Tabs(), ElementsAre("new.c"));
    EXPECT_THAT(Status(), HasSubstr("new.c"));
}

TEST_F(UnsavedChanges, StayWhenNoFileIsChosen)
{
    Start();
    Type("int a;\n");
    hands.AnswerNextAlert("Save");
    hands.AnswerNextPanel(std::optional<std::string>());
    EXPECT_FALSE(Quit());
    EXPECT_THAT(Tabs(), ElementsAre("untitled *"));
    EXPECT_EQ(Text(), "int a;\n");
}

TEST_F(UnsavedChanges, ReplaceAnotherFileOnlyAfterAQuestion)
{
    StartWithAChange();
    const std::string other = home.Write("other.c", "precious\n");
    hands.AnswerNextPanel(other);
    hands.AnswerNextAlert("No");
    hands.AnswerNextPanel(std::optional<std::string>()); // the panel is still there
    Press("Ctrl+Shift+S");
    EXPECT_EQ(Content(other), "precious\n");
    EXPECT_THAT(Tabs(), ElementsAre("a.c *"));

    hands.AnswerNextPanel(other);
    hands.AnswerNextAlert("Yes");
    Press("Ctrl+Shift+S");
    EXPECT_EQ(Content(other), "new old\n");
    EXPECT_EQ(Content(file), "old\n");
    EXPECT_THAT(Tabs(), ElementsAre("other.c"));
}

TEST_F(UnsavedChanges, AreNotWrittenOverAFileThatIsOpenInAnotherTab)
{
    StartWithAChange();
    const std::string other = home.Write("other.c", "precious\n");
    TheEditor().Actions().documents.Open(other);
    Press("Ctrl+PgUp");
    hands.TakeHeard();
    hands.AnswerNextPanel(other);
    hands.AnswerNextAlert("Yes"); // the panel's own question
    hands.AnswerNextAlert("OK");
    Press("Ctrl+Shift+S");
    EXPECT_THAT(hands.TakeHeard().back(), HasSubstr("open in another tab"));
    EXPECT_EQ(Content(other), "precious\n");
    EXPECT_THAT(Tabs(), ElementsAre("a.c *", "other.c"));
}
