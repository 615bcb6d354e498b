#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/core/TextFile.h"
#include "wren/desktop/state/Recovery.h"

#include <csignal>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

const std::string kOld = "the old text\n";
const std::string kNew = "the new text, which is longer\n";

// An editor was killed while it wrote into a file that has another name.
class TornFile : public EditorStory {
protected:
#if defined(__SANITIZE_THREAD__)
    void SetUp() override
    {
        GTEST_SKIP() << "this sanitizer cannot follow threads of a child without exec";
    }
#endif
    TornFile() : file(home.Write("a.c", kOld))
    {
        fs::create_hard_link(file, home / "b.c");
    }

    enum class Copy { None, OfTheNewText };
    void Kill(Copy copy)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            wren::Recovery editor;
            if (copy == Copy::OfTheNewText)
                editor.Keep(1, file, kNew, wren::MarkOf(base::FileIdentity::At(file), kOld));
            editor.Finish();
            std::string error;
            const auto killed = [this] {
                if (Content(file).starts_with("the new"))
                    ::kill(::getpid(), SIGKILL);
            };
            ::_exit(wren::WriteWholeFile(file, kNew, &error, {killed, 7}) ? 0 : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
        ASSERT_THAT(Content(file), AllOf(Not(kOld), Not(kNew)));
    }
    bool HasCopies() const
    {
        return fs::exists(InState("overwritten")) && !fs::is_empty(InState("overwritten"));
    }

    const std::string file;
};

} // namespace

TEST_F(TornFile, TheOldTextIsOfferedAndCanBeSaved)
{
    Kill(Copy::None);
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(AllOf(HasSubstr("while it was saving"), HasSubstr(file),
                                                     Not(HasSubstr("without saving")))));
    EXPECT_THAT(Tabs(), ElementsAre("a.c *"));
    EXPECT_EQ(Text(), kOld);
    EXPECT_THAT(Notice(), AllOf(HasSubstr(file), HasSubstr("damaged on the disk")));
    Press("Ctrl+S");
    EXPECT_EQ(Content(home / "b.c"), kOld);
    EXPECT_THAT(hands.TakeHeard(), IsEmpty()) << "no other program has changed it";
    ASSERT_TRUE(Quit());
    Start();
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
    EXPECT_FALSE(HasCopies());
}

TEST_F(TornFile, TheOldTextAndTheUnsavedOneOpenBesideEachOther)
{
    Kill(Copy::OfTheNewText);
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(AllOf(HasSubstr("without saving"), HasSubstr("while it was saving"))));
    ASSERT_THAT(Tabs(), ::testing::UnorderedElementsAre("a.c *", "untitled *"));
    EXPECT_THAT(Notice(), HasSubstr("beside the text that was being saved"));
    for (int tab = 0; tab < 2; ++tab) {
        EXPECT_EQ(Text(), CurrentTab() == "a.c *" ? kNew : kOld);
        if (CurrentTab() == "a.c *")
            Press("Ctrl+S");
        Press("Ctrl+PgUp");
    }
    EXPECT_EQ(Content(home / "b.c"), kNew);
    EXPECT_FALSE(HasCopies());
}

TEST_F(TornFile, TheOldTextIsOfferedUntilItIsDiscarded)
{
    Kill(Copy::None);
    for (const char* answer : {"Ask Later", "Discard"}) {
        hands.AnswerNextAlert(answer);
        Start();
        EXPECT_THAT(hands.TakeHeard(), ElementsAre(HasSubstr(file))) << answer;
        EXPECT_THAT(Tabs(), ElementsAre("untitled"));
    }
    EXPECT_FALSE(HasCopies());
    Start();
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
}

TEST_F(TornFile, AnOpenedOldTextSurvivesTheNextKill)
{
    Kill(Copy::None);
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_FALSE(HasCopies());
    std::string kept;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(InState("recovery")))
        if (entry.path().extension() == ".copy")
            kept += Content(entry.path());
    EXPECT_THAT(kept, HasSubstr("\n" + kOld)) << "an unsaved text as any other";
}

TEST_F(TornFile, ARepairedFileIsNotMentioned)
{
    Kill(Copy::None);
    home.Write("a.c", kNew);
    Start();
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
    EXPECT_FALSE(HasCopies());
}

TEST_F(TornFile, AVanishedFileIsRestoredWithItsOldText)
{
    Kill(Copy::None);
    fs::remove(file);
    hands.AnswerNextAlert("Open");
    Start();
    EXPECT_THAT(Tabs(), ElementsAre("a.c *"));
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), kOld);
}
