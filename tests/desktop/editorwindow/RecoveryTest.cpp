#include "wren/desktop/state/Recovery.h"
#include "tests/desktop/editorwindow/EditorStory.h"
#include "tests/support/LostReader.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ShellWord.h"
#include "wren/core/Host.h"
#include "wren/desktop/SessionKeeper.h"
#include "wren/desktop/WorksheetActions.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>

#include <filesystem>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class RestartAfterAKill : public EditorStory {
protected:
#if defined(__SANITIZE_THREAD__)
    void SetUp() override
    {
        GTEST_SKIP() << "this sanitizer cannot follow threads of a child without exec";
    }
#endif
    // What an editor leaves that is killed with an unsaved text.
    void Leave(const std::string& path, const std::string& text, const wren::SeenPlace& seen = {},
               const wren::TextEncoding& encoding = {})
    {
        const wren::FileMark was = wren::MarkOf(base::FileIdentity::At(path), Content(path));
        const pid_t child = ::fork();
        if (child == 0) {
            wren::Recovery editor([](long, const std::string& problem) {
                if (!problem.empty())
                    ::_exit(1);
            });
            editor.Keep(1, path, text, was, seen, encoding);
            editor.Finish();
            ::_exit(editor.Problem().empty() ? 0 : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        ASSERT_EQ(status, 0);
    }
    // Whole copies: one that is being written has another name.
    std::vector<std::string> Copies() const
    {
        std::vector<std::string> copies;
        std::error_code none;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(InState("recovery"), none))
            if (entry.path().extension() == ".copy")
                copies.push_back(entry.path());
        return copies;
    }
    static void UntilOutside(const std::function<bool()>& holds)
    {
        ASSERT_TRUE(QTest::qWaitFor(holds, 120'000));
    }
    std::map<std::string, std::string> Environment() const
    {
        return {
            {"HOME", home.Path()}, {"QT_QPA_PLATFORM", "offscreen"}, {"XDG_STATE_HOME", ""}, {"XDG_CONFIG_HOME", ""}};
    }
};

class UnsavedCopy : public EditorStory {
protected:
    std::string Directory() const { return fs::directory_iterator(InState("recovery"))->path(); }
    int Copies() const
    {
        std::error_code none;
        int copies = 0;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(InState("recovery"), none))
            copies += entry.path().extension() == ".copy";
        return copies;
    }
    std::string OnlyCopy() const // what is in it; "" when there is none, or more of them
    {
        std::error_code none;
        if (Copies() == 1)
            for (const fs::directory_entry& entry : fs::recursive_directory_iterator(InState("recovery"), none))
                if (entry.path().extension() == ".copy")
                    return Content(entry.path());
        return "";
    }
    void UntilToldThatItIsUnsafe()
    {
        Until([this] { return Notice().find("not safe from a crash") != std::string::npos; });
    }
};

class WhenAsked : public QObject {
public:
    explicit WhenAsked(std::function<void()> what) : what(std::move(what)) { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<QMessageBox*>(object) != nullptr)
            what();
        return false;
    }

private:
    const std::function<void()> what;
};

bool Handles(pid_t process, int signal)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("SigCgt:"))
            return (std::stoull(line.substr(7), nullptr, 16) >> (signal - 1) & 1) != 0;
    return false;
}

bool HasEnded(pid_t process)
{
    siginfo_t state = {};
    return ::waitid(P_PID, static_cast<id_t>(process), &state, WEXITED | WNOHANG | WNOWAIT) == 0 && state.si_pid != 0;
}

} // namespace

TEST_F(RestartAfterAKill, OffersAnUnsavedTextAndOpensItAsUnsaved)
{
    const std::string file = home.Write("a.c", "old\n");
    Leave(file, "typed\n");
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(AllOf(HasSubstr("without saving"), HasSubstr(file))));
    EXPECT_THAT(Tabs(), ElementsAre("a.c *"));
    EXPECT_EQ(Text(), "typed\n");
    EXPECT_EQ(Content(file), "old\n");
    Press("Ctrl+Z");
    EXPECT_EQ(Text(), "old\n") << "it can be taken back";
    Press("Ctrl+Shift+Z");
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "typed\n");
    ASSERT_TRUE(Quit());
    EXPECT_THAT(Copies(), IsEmpty());
}

TEST_F(RestartAfterAKill, ARecoveredTextIsShownWhereTheUserWas)
{
    std::string text;
    for (int line = 0; line < 300; ++line)
        text += "line\n";
    Leave(home.Write("a.c", "old\n"), text, {5 * 207 + 2, 200});
    Leave("", "short\n", {1'000'000, 1'000'000});
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_EQ(Text(), "short\n");
    EXPECT_EQ(View().Caret(), 6) << "no place is beyond the end";
    Press("Ctrl+PgUp");
    EXPECT_EQ(View().Caret(), 5 * 207 + 2);
    EXPECT_EQ(View().FirstVisibleLine(), 200);
    std::string heads;
    for (const std::string& copy : Copies())
        heads += Content(copy).substr(0, Content(copy).find('\n')) + "\n";
    EXPECT_THAT(heads, HasSubstr("\"caret\":" + std::to_string(5 * 207 + 2))) << "for the next kill";
    hands.AnswerNextAlert("Discard");
    hands.AnswerNextAlert("Discard");
    EXPECT_TRUE(Quit());
}

TEST_F(RestartAfterAKill, ARecoveredTextHasItsBookmarks)
{
    const std::string file = home.Write("a.c", "int a;\nint b;\nint c;\n");
    Start({file});
    View().SetBookmarks({1});
    ASSERT_TRUE(Quit());
    Leave(file, "// new\nint a;\nint b;\nint c;\n");
    hands.AnswerNextAlert("Open");
    Start();
    hands.TakeHeard();
    EXPECT_EQ(View().Bookmarks(), std::vector<long>{2});
    Press("Ctrl+S");
}

TEST_F(RestartAfterAKill, ARecoveredTextIsSavedInTheEncodingOfItsFile)
{
    const std::string file = home.Write("a.c", "caf\xe9\n");
    Leave(file, "\xc3\xa9t\xc3\xa9\n", {}, {"ISO-8859-1", false});
    hands.AnswerNextAlert("Open");
    Start();
    hands.TakeHeard();
    EXPECT_EQ(Text(), "\xc3\xa9t\xc3\xa9\n");
    EXPECT_EQ(Notice(), "") << "no other program has changed the file";
    Press("Ctrl+Z");
    EXPECT_EQ(Text(), "caf\xc3\xa9\n");
    Press("Ctrl+Shift+Z");
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "\xe9t\xe9\n");
}

TEST_F(RestartAfterAKill, ATextThatHadNoFileIsOpenedWithoutOne)
{
    Leave("", "typed\n");
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_EQ(CurrentTab(), "untitled *");
    EXPECT_EQ(Text(), "typed\n");
}

TEST_F(RestartAfterAKill, ATextWhoseFileIsGoneIsOpenedAndCanBeSaved)
{
    Leave(home / "gone.c", "typed\n");
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_EQ(CurrentTab(), "gone.c *");
    Press("Ctrl+S");
    EXPECT_EQ(Content(home / "gone.c"), "typed\n");
}

TEST_F(RestartAfterAKill, SavingOverAFileThatChangedMeanwhileAsksFirst)
{
    const std::string file = home.Write("a.c", "old\n");
    Leave(file, "typed\n");
    home.Write("a.c", "theirs\n");
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_EQ(Text(), "typed\n");
    EXPECT_THAT(Notice(), AllOf(HasSubstr(file), HasSubstr("changed by another program since")));
    hands.TakeHeard();
    hands.AnswerNextAlert("No");
    Press("Ctrl+S");
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(HasSubstr("Another program has changed")));
    EXPECT_EQ(Content(file), "theirs\n");
    hands.AnswerNextAlert("Yes");
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "typed\n");
}

TEST_F(RestartAfterAKill, ATextRecoveredTwiceStillKnowsItsOriginalFile)
{
    const std::string file = home.Write("a.c", "old\n");
    Leave(file, "typed\n");
    home.Write("a.c", "theirs\n");
    for (const char* answer : {"Ask Later", "Open"}) {
        hands.AnswerNextAlert(answer);
        Start();
    }
    UntilOutside([&] { return Copies().size() == 1; });
    EXPECT_THAT(Content(Copies().front()), HasSubstr(wren::MarkOf({}, "old\n").content));
}

TEST_F(RestartAfterAKill, LinesThatAnotherEditorAddedToTheWorksheetStay)
{
    const std::string file = wren::WorksheetActions::File();
    Leave(file, "typed\n");
    home.Write(fs::path(file).lexically_relative(home.Path()), "theirs\n");
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_EQ(Text(), "typed\n");
    hands.TakeHeard();
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "typed\ntheirs\n");
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
}

TEST_F(RestartAfterAKill, AFileThatWasOnlyTouchedIsOverwrittenWithoutAQuestion)
{
    const std::string file = home.Write("a.c", "old\n");
    Leave(file, "typed\n");
    fs::remove(file);
    home.Write("a.c", "old\n");
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_THAT(Notice(), IsEmpty());
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "typed\n");
}

TEST_F(RestartAfterAKill, AnOpenedTextSurvivesTheNextKill)
{
    Leave(home.Write("a.c", "old\n"), "typed\n");
    hands.AnswerNextAlert("Open");
    Start();
    UntilOutside([&] { return Copies().size() == 1; });
    ASSERT_THAT(Copies(), SizeIs(1));
    EXPECT_THAT(Content(Copies().front()), HasSubstr("\ntyped\n"));
}

TEST_F(RestartAfterAKill, ADiscardedTextIsNotOfferedAgain)
{
    const std::string file = home.Write("a.c", "old\n");
    Leave(file, "typed\n");
    hands.AnswerNextAlert("Discard");
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("untitled"));
    EXPECT_THAT(Copies(), IsEmpty());
    ASSERT_TRUE(Quit());
    hands.TakeHeard();
    Start();
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
    EXPECT_EQ(Content(file), "old\n");
}

TEST_F(RestartAfterAKill, ATextIsOfferedAgainAfterAskLater)
{
    Leave(home.Write("a.c", "old\n"), "typed\n");
    hands.AnswerNextAlert("Ask Later");
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("untitled"));
    ASSERT_TRUE(Quit());
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_EQ(Text(), "typed\n");
}

TEST_F(RestartAfterAKill, AKillDuringTheQuestionLosesNothing)
{
    Leave(home.Write("a.c", "old\n"), "typed\n");
    {
        RunningProgram editor({WREN_DESKTOP, "--bundle", bundle}, home.Path(), Environment());
        UntilOutside([&] { return Handles(editor.Process(), SIGTERM); });
        ::kill(editor.Process(), SIGKILL);
        EXPECT_EQ(editor.Wait().signal, SIGKILL);
    }
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_EQ(Text(), "typed\n");
}

TEST_F(RestartAfterAKill, TextTypedBeforeAPauseIsOffered)
{
    const std::string file = home.Write("a.c", "old\n");
    {
        RunningProgram editor({TYPING_EDITOR, "typed ", "--bundle", bundle, file}, home.Path(), Environment());
        UntilOutside([&] { return !Copies().empty(); });
        ::kill(editor.Process(), SIGKILL);
        EXPECT_EQ(editor.Wait().signal, SIGKILL);
    }
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(HasSubstr(file)));
    EXPECT_EQ(Text(), "typed old\n");
    EXPECT_EQ(Content(file), "old\n");
}

TEST_F(RestartAfterAKill, ATerminationSignalKeepsTheSessionAndTheNewestText)
{
    const std::string file = home.Write("a.c", "old\n");
    {
        RunningProgram editor({TYPING_EDITOR, "typed ", "--bundle", bundle, file}, home.Path(), Environment());
        UntilOutside([&] { return Handles(editor.Process(), SIGTERM); });
        ::kill(editor.Process(), SIGTERM);
        EXPECT_EQ(editor.Wait().status, 128 + SIGTERM);
    }
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("a.c *")) << "the session's file, and what was typed into it";
    EXPECT_EQ(Text(), "typed old\n");
}

TEST_F(RestartAfterAKill, TheProgramKeepsItsSessionOnASignal)
{
    const std::string file = home.Write("a.c", "old\n");
    {
        RunningProgram editor({WREN_DESKTOP, "--bundle", bundle, file}, home.Path(), Environment());
        UntilOutside([&] { return Handles(editor.Process(), SIGTERM); });
        ::kill(editor.Process(), SIGTERM);
        EXPECT_EQ(editor.Wait().status, 128 + SIGTERM);
    }
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
}

// As when the editor was started in a pipe, or its output is kept by a program that has ended.
TEST_F(RestartAfterAKill, AClosedOutputDoesNotKillTheEditor)
{
    for (const auto answer : {SIG_DFL, SIG_IGN}) {
        const LostReader nobody;
        const StartedWith started(SIGPIPE, answer);
        const std::string command =
            "WREN_VERBOSE=1 exec " + ShellWord(WREN_DESKTOP) + " --bundle " + ShellWord(bundle) + " a.c 2>&1";
        RunningProgram editor({"/bin/sh", "-c", command}, home.Path(), Environment(), nobody.Output());
        // What Qt has to say of this platform, it says when the window is shown.
        UntilOutside([&] { return Handles(editor.Process(), SIGTERM) || HasEnded(editor.Process()); });
        ::kill(editor.Process(), SIGTERM);
        const ProgramRun run = editor.Wait();
        EXPECT_EQ(run.status, 128 + SIGTERM) << "signal " << run.signal;
    }
}

// Without a home, the plug-in says so at every lookup and completion. The offscreen platform has its own to say.
TEST_F(RestartAfterAKill, TheProgramPrintsOnlyWhatItIsAskedFor)
{
    for (const bool verbose : {false, true})
        for (const std::string& place : {home.Path(), std::string()}) {
            std::map<std::string, std::string> environment = Environment();
            environment["HOME"] = place;
            environment["WREN_VERBOSE"] = verbose ? "1" : "";
            RunningProgram editor({WREN_DESKTOP, "--no-index", "--new-instance", "--bundle", bundle, "a.c"},
                                  home.Path(), environment);
            UntilOutside([&] { return Handles(editor.Process(), SIGTERM) || HasEnded(editor.Process()); });
            ::kill(editor.Process(), SIGTERM);
            const ProgramRun run = editor.Wait();
            EXPECT_EQ(run.status, 128 + SIGTERM) << "signal " << run.signal;
            EXPECT_EQ(run.output, "") << place;
            EXPECT_EQ(!run.errors.empty(), verbose) << run.errors;
        }
}

TEST_F(RestartAfterAKill, ATextIsOfferedAgainWhenItCouldNotBeCopiedMeanwhile)
{
    Leave(home.Write("a.c", "old\n"), "typed\n");
    const std::string left = fs::path(Copies().at(0)).parent_path();
    {
        const WhenAsked asked([&] {
            for (const fs::directory_entry& entry : fs::directory_iterator(InState("recovery")))
                if (entry.path() != left)
                    fs::remove_all(entry.path());
        });
        hands.AnswerNextAlert("Open");
        Start();
    }
    EXPECT_EQ(Text(), "typed\n");
    Until([this] { return !Notice().empty(); });
    EXPECT_THAT(Notice(), HasSubstr("not safe from a crash"));
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_THAT(hands.TakeHeard(), SizeIs(2));
    EXPECT_EQ(Text(), "typed\n");
    EXPECT_THAT(Notice(), IsEmpty());
    ASSERT_THAT(Copies(), SizeIs(1));
    EXPECT_NE(fs::path(Copies().front()).parent_path(), left);
}

TEST_F(RestartAfterAKill, TheOpenFilesAreOpenedAgain)
{
    const std::string file = home.Write("a.c", "old\n");
    const std::string other = home.Write("b.c", "old\n");
    {
        RunningProgram editor({WREN_DESKTOP, "--bundle", bundle, file, other}, home.Path(), Environment());
        UntilOutside([&] { return wren::LoadSession().files.size() == 2; });
        ::kill(editor.Process(), SIGKILL);
        EXPECT_EQ(editor.Wait().signal, SIGKILL);
    }
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("a.c", "b.c"));
    EXPECT_THAT(TheEditor().RecentFiles(), ElementsAre(other, file));
}

TEST_F(UnsavedCopy, AFileInPlaceOfTheDirectoryIsReportedWithARemedyUntilItIsGone)
{
    home.Write(".local/state/wren/recovery", "in the way");
    Start({home.Write("a.c", "old\n")});
    const std::string told = Notice();
    EXPECT_THAT(told, AllOf(HasSubstr("not safe from a crash"), HasSubstr(InState("recovery")),
                            HasSubstr("is not a directory: move it away")));
    Type("typed ");
    Until([this] { return TheEditor().HasUnkeptTexts(); });
    EXPECT_EQ(Notice(), told) << "told once";
    fs::remove(InState("recovery"));
    Until([this] { return Notice().empty(); });
    EXPECT_THAT(OnlyCopy(), HasSubstr("\n" + Text()));
}

TEST_F(UnsavedCopy, AFailedCopyIsRetriedAndReportedAgain)
{
    Start({home.Write("a.c", "old\n")});
    for (int round = 0; round < 2; ++round) {
        fs::remove_all(InState("recovery"));
        home.Write(".local/state/wren/recovery", "in the way");
        Type("typed ");
        UntilToldThatItIsUnsafe();
        fs::remove(InState("recovery"));
        Until([this] { return Notice().empty(); });
        EXPECT_THAT(OnlyCopy(), HasSubstr("\n" + Text()));
    }
}

TEST_F(UnsavedCopy, ARemovedDirectoryIsRecreatedWithCopiesOfAllTexts)
{
    Start({home.Write("a.c", ""), home.Write("b.c", "")});
    Type("one ");
    Until([this] { return !OnlyCopy().empty(); });
    fs::remove_all(InState("recovery"));
    Press("Ctrl+PgUp");
    Type("two ");
    Until([this] { return Copies() == 2; });
    EXPECT_THAT(Notice(), IsEmpty());
}

TEST_F(UnsavedCopy, ACopyThatIsNoLongerNeededIsNotReported)
{
    Start({home.Write("a.c", "old\n")});
    fs::create_directory(Directory() + "/" + std::to_string(TheEditor().TheHost().Current()->Id()) + ".copy");
    Type("typed ");
    UntilToldThatItIsUnsafe();
    Press("Ctrl+S");
    EXPECT_THAT(Notice(), IsEmpty());
}

TEST_F(UnsavedCopy, IsMadeWhileTheUserTypesWithoutAPause)
{
    Start({home.Write("a.c", "old\n")});
    Until([this] {
        Type("x");
        return Copies() == 1;
    });
    EXPECT_THAT(OnlyCopy(), HasSubstr("\nx"));
}

TEST_F(UnsavedCopy, IsMadeSoonAndWaitsInProportionToTheSize)
{
    using Keeper = wren::SessionKeeper;
    using namespace std::chrono_literals;
    EXPECT_LT(Keeper::kPause + Keeper::MoreFor(10'000'000), 1s);
    EXPECT_LT(Keeper::kLongest + Keeper::MoreFor(10'000'000), 5s);
    EXPECT_EQ(Keeper::MoreFor(100'000), 0ms);
    EXPECT_EQ(Keeper::MoreFor(2'000'000'000) / Keeper::MoreFor(200'000'000), 10);
}
