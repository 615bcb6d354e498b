#include "tests/desktop/editorwindow/EditorStory.h"

#include <chrono>
#include <filesystem>
#include <functional>

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

class ChangedOnDisk : public EditorStory {
protected:
    void StartWith(const std::string& text)
    {
        file = home.Write("a.c", text);
        Start({file});
    }
    void WriteElsewhere(const std::string& text) { home.Write("a.c", text); } // another program does
    void ReplaceElsewhere(const std::string& text) { fs::rename(home.Write("new", text), file); }
    bool UntilTold(const char* what)
    {
        return Until([&] { return Notice().find(what) != std::string::npos; });
    }
    std::string file;
};

} // namespace

TEST_F(ChangedOnDisk, AnUnchangedTextIsReloadedAndTheCaretStays)
{
    StartWith("one\ntwo\nthree\n");
    View().GoTo(5);
    WriteElsewhere("one\ntwo\nthree\nfour\n");
    Until([&] { return Text() == "one\ntwo\nthree\nfour\n"; });
    EXPECT_EQ(View().Caret(), 5);
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
}

TEST_F(ChangedOnDisk, TheCaretFollowsItsLine)
{
    StartWith("one\ntwo\nthree\n");
    View().GoTo(5);
    WriteElsewhere("zero\none\ntwo\nthree\n");
    Until([&] { return Text() == "zero\none\ntwo\nthree\n"; });
    EXPECT_EQ(View().Caret(), 10);
}

TEST_F(ChangedOnDisk, AReloadCanBeUndone)
{
    StartWith("one\ntwo\n");
    Type("mine ");
    Press("Ctrl+S");
    WriteElsewhere("theirs\n");
    Until([&] { return Text() == "theirs\n"; });
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
    Choose("Edit", "Undo");
    EXPECT_EQ(Text(), "mine one\ntwo\n");
    EXPECT_THAT(Tabs(), ElementsAre("a.c *"));
    Press("Ctrl+Z");
    EXPECT_EQ(Text(), "one\ntwo\n");
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "one\ntwo\n");
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
}

TEST_F(ChangedOnDisk, TheMenuUndoesAReload)
{
    StartWith("one\n");
    WriteElsewhere("one\ntwo\n");
    Until([&] { return Text() == "one\ntwo\n"; });
    Choose("Edit", "Undo");
    EXPECT_EQ(Text(), "one\n");
}

TEST_F(ChangedOnDisk, NewLinesUseTheReloadedFilesLineEnds)
{
    StartWith("one\ntwo\n");
    WriteElsewhere("one\r\ntwo\r\n");
    Until([&] { return Text() == "one\r\ntwo\r\n"; });
    View().GoTo(0);
    Press("Return");
    EXPECT_EQ(Text(), "\r\none\r\ntwo\r\n");
}

TEST_F(ChangedOnDisk, TheCaretStaysWithinAShorterText)
{
    StartWith("one\ntwo\n");
    View().GoTo(8);
    WriteElsewhere("1");
    Until([&] { return Text() == "1"; });
    EXPECT_EQ(View().Caret(), 1);
}

TEST_F(ChangedOnDisk, AFileReplacedByARenameIsFollowed)
{
    StartWith("old\n");
    ReplaceElsewhere("second\n");
    Until([&] { return Text() == "second\n"; });
    WriteElsewhere("third\n");
    Until([&] { return Text() == "third\n"; });
}

TEST_F(ChangedOnDisk, UnsavedChangesAreKeptWithANotice)
{
    StartWith("old\n");
    Type("mine ");
    WriteElsewhere("theirs\n");
    UntilTold("changed by another program");
    EXPECT_THAT(Notice(), HasSubstr(file));
    EXPECT_EQ(Text(), "mine old\n");
    EXPECT_THAT(Tabs(), ElementsAre("a.c *"));
    EXPECT_EQ(Content(file), "theirs\n");
}

TEST_F(ChangedOnDisk, SavingOverAChangedFileAsksFirst)
{
    StartWith("old\n");
    Type("mine ");
    WriteElsewhere("theirs\n");
    hands.AnswerNextAlert("No");
    Press("Ctrl+S");
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(AllOf(HasSubstr("Another program has changed"), HasSubstr(file))));
    EXPECT_EQ(Content(file), "theirs\n");
    EXPECT_THAT(Tabs(), ElementsAre("a.c *"));

    hands.AnswerNextAlert("Yes");
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "mine old\n");
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
    hands.TakeHeard();

    Type("more ");
    Press("Ctrl+S");
    EXPECT_THAT(hands.TakeHeard(), IsEmpty()) << "it is this editor's file again";
    EXPECT_EQ(Content(file), "mine more old\n");
}

TEST_F(ChangedOnDisk, RevertingAsksAndLoadsTheFilesText)
{
    StartWith("old\n");
    Type("mine ");
    WriteElsewhere("theirs\n");
    UntilTold("changed by another program");
    hands.AnswerNextAlert("No");
    Choose("File", "Revert");
    EXPECT_EQ(Text(), "mine old\n");
    hands.AnswerNextAlert("Yes");
    Choose("File", "Revert");
    EXPECT_EQ(Text(), "theirs\n");
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
}

TEST_F(ChangedOnDisk, AFileRewrittenWithTheSameTextIsNotReloaded)
{
    StartWith("old\n");
    Type("mine ");
    Press("Ctrl+S");
    ReplaceElsewhere("mine old\n");
    ComeBack();
    Press("Ctrl+Z");
    EXPECT_EQ(Text(), "old\n");
    EXPECT_THAT(Notice(), IsEmpty());
}

TEST_F(ChangedOnDisk, AFileRewrittenWithTheSameTextIsOverwrittenWithoutAQuestion)
{
    StartWith("old\n");
    for (const bool gone : {false, true}) {
        const std::string before = Content(file);
        if (gone)
            fs::remove(file);
        WriteElsewhere(before);
        fs::last_write_time(file, fs::file_time_type::clock::now() + std::chrono::hours(1));
        ComeBack();
        Type("new ");
        Press("Ctrl+S");
        EXPECT_EQ(Content(file), "new " + before);
    }
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
}

TEST_F(ChangedOnDisk, ARemovedFileIsReportedAndItsTextCanBeSavedAgain)
{
    StartWith("old\n");
    fs::remove(file);
    UntilTold("is no longer there");
    EXPECT_EQ(Text(), "old\n");
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "old\n");
    EXPECT_THAT(hands.TakeHeard(), IsEmpty());
}

TEST_F(ChangedOnDisk, ARemovedFileKeepsUnsavedChanges)
{
    StartWith("old\n");
    Type("mine ");
    fs::remove(file);
    UntilTold("is no longer there");
    EXPECT_EQ(Text(), "mine old\n");
    EXPECT_THAT(Tabs(), ElementsAre("a.c *"));
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "mine old\n");
}

TEST_F(ChangedOnDisk, AFileThatComesBackIsReloaded)
{
    StartWith("old\n");
    fs::remove(file);
    UntilTold("is no longer there");
    WriteElsewhere("back\n");
    Until([&] { return Text() == "back\n"; });
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
    EXPECT_THAT(Notice(), IsEmpty());
}

TEST_F(ChangedOnDisk, ANoticeIsWithdrawnOnceItNoLongerApplies)
{
    struct Case {
        const char* why;
        const char* answer; // to what is asked first
        bool asksWhenGone;
        std::function<void()> happens;
    };
    const Case kCases[] = {
        {"it is back as it was", nullptr, false, [&] { WriteElsewhere("old\n"); }},
        {"it is saved", "Yes", false, [&] { Press("Ctrl+S"); }},
        {"its text is taken", "Yes", true, [&] { WriteElsewhere("theirs\n"), Choose("File", "Revert"); }},
        {"it is closed", "Discard", true, [&] { Press("Ctrl+W"); }},
    };
    for (const bool gone : {false, true})
        for (const Case& c : kCases) {
            StartWith("old\n");
            Type("mine ");
            gone ? static_cast<void>(fs::remove(file)) : WriteElsewhere("changed\n");
            UntilTold(gone ? "is no longer there" : "changed by another program");
            if (c.answer != nullptr && (!gone || c.asksWhenGone))
                hands.AnswerNextAlert(c.answer);
            c.happens();
            EXPECT_TRUE(Until([this] { return Notice().empty(); })) << c.why;
            hands.TakeHeard();
        }
}

TEST_F(ChangedOnDisk, AFileThatComesBackLeavesUnsavedChangesAlone)
{
    StartWith("old\n");
    Type("mine ");
    fs::remove(file);
    UntilTold("is no longer there");
    WriteElsewhere("back\n");
    UntilTold("changed by another program");
    EXPECT_EQ(Text(), "mine old\n");
    EXPECT_EQ(Content(file), "back\n");
}

TEST_F(ChangedOnDisk, AnUnreadableFileKeepsItsTextAndSaysWhy)
{
    StartWith("old\n");
    hands.AnswerNextAlert("OK");
    fs::remove(file);
    fs::create_directory(file);
    ComeBack();
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(AllOf(HasSubstr(file), HasSubstr("Is a directory"))));
    EXPECT_EQ(Text(), "old\n");
}

TEST_F(ChangedOnDisk, ClosingTheTextOfARemovedFileAsksToSaveIt)
{
    StartWith("old\n");
    fs::remove(file);
    UntilTold("is no longer there");
    hands.AnswerNextAlert("Cancel");
    CloseTab(0);
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(HasSubstr("a.c is no longer there. Save its text")));
    EXPECT_EQ(Text(), "old\n");
    hands.AnswerNextAlert("Save");
    EXPECT_TRUE(Quit());
    EXPECT_EQ(Content(file), "old\n");
}
