#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/core/Host.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/PluginButton.h"
#include "wren/desktop/WorksheetActions.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

class WorksheetStory : public EditorStory {
protected:
    void OpenWith(const std::string& lines)
    {
        Press("Ctrl+Shift+W");
        Type(lines);
    }
    // Another editor does.
    void WriteElsewhere(const std::string& text)
    {
        home.Write(fs::path(wren::WorksheetActions::File()).lexically_relative(home.Path()), text);
    }
    static std::string Kept() { return Content(wren::WorksheetActions::File()); }
    void RunLine()
    {
        Press("Ctrl+Return");
        UntilEnded();
    }
    void UntilEnded()
    {
        Until([this] { return !TheEditor().Actions().worksheet.IsRunning(); });
    }
};

} // namespace

TEST_F(WorksheetStory, ControlEnterRunsTheCaretsLineAndPutsItsOutputBelow)
{
    Start();
    OpenWith("echo one\necho two\necho three");
    Press("Up");
    RunLine();
    EXPECT_EQ(Text(), "echo one\necho two\ntwo\necho three");
    EXPECT_THAT(Status(), HasSubstr("has ended"));
}

TEST_F(WorksheetStory, TheLastLineCanRun)
{
    Start();
    OpenWith("echo one");
    RunLine();
    EXPECT_EQ(Text(), "echo one\none\n");
    EXPECT_EQ(View().Caret(), 13) << "behind the output";
}

TEST_F(WorksheetStory, TheSelectedLinesRunTogether)
{
    Start();
    OpenWith("a=one\necho $a\n");
    Press("Ctrl+A");
    RunLine();
    EXPECT_EQ(Text(), "a=one\necho $a\none\n");
}

TEST_F(WorksheetStory, LinesRunInTheDirectoryWhereTheEditorStarted)
{
    Start();
    OpenWith("pwd");
    RunLine();
    EXPECT_EQ(Text(), "pwd\n" + home.Path() + "\n");
}

TEST_F(WorksheetStory, AFailureIsReportedWithItsErrorsBelow)
{
    Start();
    OpenWith("echo oh >&2; exit 3");
    RunLine();
    EXPECT_THAT(Text(), EndsWith("\noh\n"));
    EXPECT_THAT(Status(), HasSubstr("status 3"));
}

TEST_F(WorksheetStory, ControlShiftEnterStopsTheCommandAndItsChildren)
{
    Start();
    OpenWith("echo begun; sh -c 'echo $$ > child; exec sleep 1000'; echo not reached");
    Press("Ctrl+Return");
    Until([this] { return !Content(home / "child").empty() && Text().ends_with("begun\n"); });
    const pid_t child = std::atoi(Content(home / "child").c_str());
    Press("Ctrl+Shift+Return");
    UntilEnded();
    EXPECT_THAT(Status(), HasSubstr("was stopped"));
    EXPECT_THAT(Text(), EndsWith("begun\n"));
    Until([child] { return !fs::exists("/proc/" + std::to_string(child)); });
}

TEST_F(WorksheetStory, OneCommandRunsAtATime)
{
    Start();
    OpenWith("sleep 1000");
    Press("Ctrl+Return");
    ASSERT_TRUE(TheEditor().Actions().worksheet.IsRunning());
    Type("echo two");
    TheEditor().Actions().worksheet.RunLines();
    EXPECT_THAT(Status(), HasSubstr("still running"));
    Press("Ctrl+Shift+Return");
    UntilEnded();
    EXPECT_THAT(Text(), Not(HasSubstr("\ntwo")));
}

TEST_F(WorksheetStory, OutputStaysBelowItsLinesWhileTheUserWritesAboveThem)
{
    Start();
    OpenWith("echo early; while [ ! -e go ]; do sleep 0.01; done; echo late");
    const std::string command = Text();
    Press("Ctrl+Return");
    Until([this] { return Text().ends_with("\nearly\n"); });
    Press("Ctrl+Home");
    Type("above\n");
    home.Write("go", "");
    UntilEnded();
    EXPECT_EQ(Text(), "above\n" + command + "\nearly\nlate\n");
}

TEST_F(WorksheetStory, LinesOfAnotherEditorAreAppendedWhenItIsStored)
{
    struct Case {
        const char* why;
        const char* before;
        const char* theirs;
        const char* kept;
    };
    const Case kCases[] = {
        {"nobody else was there", "old\n", "old\n", "old\nmine"},
        {"both began it", "", "theirs\n", "mine\ntheirs\n"},
        {"both went on at its end", "old\n", "old\ntheirs\n", "old\nmine\ntheirs\n"},
        {"its last line was open", "old", "old\ntheirs", "oldmine\ntheirs\n"},
        {"the other wrote in its middle", "one\ntwo\n", "one\ntheirs\ntwo\n", "one\ntwo\nmine\ntheirs\n"},
        {"the other took lines away", "one\ntwo\n", "two\n", "one\ntwo\nmine"},
        {"both wrote the same", "old\n", "old\nmine\n", "old\nmine\nmine\n"},
    };
    for (const Case& c : kCases) {
        WriteElsewhere(c.before);
        Start({home.Write("a.c", "int a;\n")});
        OpenWith("mine");
        WriteElsewhere(c.theirs);
        ASSERT_TRUE(Quit());
        EXPECT_EQ(Kept(), c.kept) << c.why;
    }
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
}

TEST_F(WorksheetStory, LinesOfAnotherEditorAreAddedOnceAtEachSave)
{
    Start();
    OpenWith("mine");
    WriteElsewhere("theirs\n");
    Press("Ctrl+S");
    EXPECT_EQ(Text(), "mine\ntheirs\n");
    Press("Ctrl+End");
    Type("more\n");
    Press("Ctrl+S");
    EXPECT_EQ(Kept(), "mine\ntheirs\nmore\n");
    Press("Ctrl+End");
    Type("last\n");
    WriteElsewhere(Kept() + "theirs again\n");
    Press("Ctrl+S");
    EXPECT_EQ(Kept(), "mine\ntheirs\nmore\nlast\ntheirs again\n");
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
}

TEST_F(WorksheetStory, ControlEnterRunsNothingInOtherTexts)
{
    Start();
    Type("touch made");
    Press("Ctrl+Return");
    EXPECT_FALSE(TheEditor().Actions().worksheet.IsRunning());
    EXPECT_FALSE(fs::exists(home / "made"));
}

TEST_F(WorksheetStory, ClosingItWhileACommandRunsAsksAndStopsIt)
{
    Start({home.Write("a.c", "int a;\n")});
    OpenWith("echo $$ > running; exec sleep 1000");
    Press("Ctrl+Return");
    Until([this] { return !Content(home / "running").empty(); });
    hands.AnswerNextAlert("No");
    Press("Ctrl+W");
    EXPECT_THAT(Tabs(), ElementsAre("a.c", "Worksheet"));
    EXPECT_TRUE(TheEditor().Actions().worksheet.IsRunning());
    hands.AnswerNextAlert("Yes");
    Press("Ctrl+W");
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
    UntilEnded();
    EXPECT_THAT(hands.TakeHeard(), Each(HasSubstr("still running")));
    EXPECT_EQ(Text(), "int a;\n");
}

TEST_F(WorksheetStory, EndlessOutputIsNotKeptForEver)
{
    Start();
    OpenWith("head -c 20000000 /dev/zero | tr '\\0' x");
    RunLine();
    const std::string text = Text();
    EXPECT_EQ(std::count(text.begin(), text.end(), 'x'), wren::WorksheetActions::kMostOutput + 1)
        << "with the command's";
    EXPECT_GT(std::count(text.begin(), text.end(), '\n'), 4000) << "in lines that can be drawn";
    EXPECT_THAT(Status(), HasSubstr("The last 4 MB of its output are left out"));
}

TEST_F(WorksheetStory, QuittingTheEditorEndsTheCommand)
{
    Start();
    OpenWith("echo $$ > running; exec sleep 1000");
    Press("Ctrl+Return");
    Until([this] { return !Content(home / "running").empty(); });
    const std::string process = "/proc/" + Content(home / "running").substr(0, Content(home / "running").find('\n'));
    hands.AnswerNextAlert("No");
    ASSERT_FALSE(Quit());
    EXPECT_TRUE(fs::exists(process));
    hands.AnswerNextAlert("Yes");
    ASSERT_TRUE(Quit());
    EXPECT_FALSE(fs::exists(process));
    EXPECT_THAT(hands.TakeHeard(), Each(HasSubstr("still running")));
}

// How a user gets tags of a directory without leaving the editor.
TEST_F(WorksheetStory, TheButtonsCommandsMakeTheTagsOfTheDirectory)
{
    home.Write("source/shapes.h", "int Area(int width, int height);\nstruct Circle { int radius; };\n");
    Start({home.Write("source/draw.c", "int draw(void) { return Area(1, 2); }\n")});
    wren::PluginButton& button = TheEditor().Window().Button();
    hands.ChooseNext("Help create tags in Worksheet");
    const QPoint place = button.rect().center();
    QContextMenuEvent asked(QContextMenuEvent::Mouse, place, button.mapToGlobal(place));
    QApplication::sendEvent(&button, &asked);
    Settle();
    ASSERT_EQ(CurrentTab(), "Worksheet");
    const std::string pasted = Text();
    const size_t command = pasted.find("find " + home.Path() + "/source");
    ASSERT_NE(command, std::string::npos) << pasted;

    View().GoTo(static_cast<long>(command));
    RunLine();
    EXPECT_THAT(Status(), HasSubstr("has ended")) << Text();
    EXPECT_THAT(Content(home / "tags"), HasSubstr("\nArea\tsource/shapes.h\t"));
    EXPECT_THAT(Content(home / "tags"), HasSubstr("\nCircle\t"));
    EXPECT_THAT(Content(home / "tags"), HasSubstr("\ndraw\t"));
    EXPECT_EQ(Text(), pasted) << "it has nothing to say";
}

TEST_F(WorksheetStory, HoldingTheButtonAsksForItsMenu)
{
    Start({home.Write("source/draw.c", "int draw(void);\n")});
    hands.ChooseNext("Help create tags in Worksheet");
    QTest::mousePress(&TheEditor().Window().Button(), Qt::LeftButton);
    Until([this] { return CurrentTab() == "Worksheet"; });
    EXPECT_THAT(Text(), HasSubstr("find " + home.Path() + "/source"));
}

TEST_F(WorksheetStory, WithoutAFileItIsAnUnsavedTextCalledWorksheet)
{
    ::unsetenv("HOME");
    Start();
    Type("int a;");
    OpenWith("echo one");
    EXPECT_THAT(Tabs(), ElementsAre("untitled *", "Worksheet"));
    RunLine();
    EXPECT_EQ(Text(), "echo one\none\n");
    EXPECT_THAT(Tabs(), ElementsAre("untitled *", "Worksheet"));
    Press("Ctrl+PgUp");
    EXPECT_EQ(Text(), "int a;");
    hands.AnswerNextAlert("Discard");
    hands.AnswerNextAlert("Discard");
    EXPECT_TRUE(Quit());
}

TEST_F(WorksheetStory, ClosingAsksWhenItCannotBeStored)
{
    home.Write(".local/state/wren", "in the way");
    Start({home.Write("a.c", "int a;\n")});
    OpenWith("echo one");
    hands.AnswerNextAlert("OK"); // the reason
    hands.AnswerNextAlert("Cancel");
    EXPECT_FALSE(Quit());
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(HasSubstr(".local/state/wren"), "Save the changes to Worksheet?"));
    EXPECT_EQ(Text(), "echo one");
    hands.AnswerNextAlert("OK");
    hands.AnswerNextAlert("Discard");
    EXPECT_TRUE(Quit());
}

TEST_F(WorksheetStory, SaveAsWritesACopyAndKeepsTheWorksheet)
{
    Start();
    OpenWith("echo hello");
    hands.AnswerNextPanel(home / "copy.sh");
    Choose("File", "Save As\u2026");
    EXPECT_EQ(Content(home / "copy.sh"), "echo hello");
    EXPECT_EQ(TheEditor().TheHost().Current()->Path(), wren::WorksheetActions::File());
    EXPECT_EQ(CurrentTab(), "Worksheet");
}
