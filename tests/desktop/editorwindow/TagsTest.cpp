// Tags that are made while somebody sits at the editor.
#include "tests/desktop/editorwindow/EditorStory.h"
#include "tests/support/Fifo.h"
#include "vetch/storage/Home.h"
#include "vetch/support/ShellCommand.h"
#include "wren/core/TagsLine.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/PluginButton.h"
#include "wren/desktop/TagsKeeper.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <unistd.h>

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

namespace fs = std::filesystem;

constexpr const char* kOldTags = "bar\tempty.c\t1;\"\tv\n";

// A project whose tags are stale: a lookup of "bar" in main.c rebuilds them by itself.
class TagsStory : public EditorStory {
protected:
    TagsStory()
    {
        home.Write("T/empty.c", "int bar;");
        home.Write("T/main.c", "bar\n");
        home.Write("T/a.c", "int foo;\n");
        home.Write("T/tags", kOldTags);
        fs::last_write_time(home / "T/tags", fs::file_time_type::clock::now() - std::chrono::hours(1));
        UseProgram("cat >/dev/null; printf 'bar\\tempty.c\\t1;\"\\tv\\nfoo\\ta.c\\t1;\"\\tv\\n' >\"$t\"\n");
    }
    ~TagsStory() override { ::unsetenv("WREN_CTAGS"); }

    // The tags program; it is to write "$t".
    void UseProgram(const std::string& script)
    {
        const std::string program =
            home.Write("program", "#!/bin/sh\nwhile [ $# -gt 0 ]; do [ \"$1\" = -f ] && t=$2; shift; done\n" + script);
        fs::permissions(program, fs::perms::owner_all);
        ::setenv("WREN_CTAGS", program.c_str(), 1);
    }

    void LookUp()
    {
        Start({home / "T/main.c"});
        SettleBackground();
        View().GoTo(1);
        Press("F12");
        SettleBackground();
        Settle();
    }
    void Update()
    {
        hands.ChooseNext("Update local tags");
        emit TheEditor().Window().Button().PopUpAsked();
    }
    std::string Tags() const { return Content(home / "T/tags"); }
    QString ServingTags() { return TheEditor().Window().findChild<QLabel*>("servingTags")->text(); }
    QPushButton* NoticeButton(int place)
    {
        const auto buttons = TheEditor().Window().Notices().findChildren<QPushButton*>();
        return place < buttons.size() ? buttons[place] : nullptr;
    }
    QToolButton& RebuildButton() { return *TheEditor().Window().findChild<QToolButton*>("rebuildTags"); }
};

// Counts the requests whose last line has returned. Made when the editor runs.
class EndedRequests {
public:
    EndedRequests()
    {
        ended = 0;
        runner = vetch::SetShellRunner(Run);
    }
    ~EndedRequests() { vetch::SetShellRunner(runner); }
    EndedRequests(const EndedRequests&) = delete;
    EndedRequests& operator=(const EndedRequests&) = delete;

    int Count() const { return ended; }

private:
    static int Run(const char* command, const vetch::ShellRequest& request)
    {
        const std::optional<wren::TagsLine> line = wren::ReadTagsLine(command, Home());
        const int status = runner.load()(command, request);
        ended += line && line->kind == wren::TagsLine::Kind::Move;
        return status;
    }

    static inline std::atomic<vetch::ShellRunner> runner;
    static inline std::atomic<int> ended;
};

} // namespace

TEST_F(TagsStory, ALookupRebuildsStaleTags)
{
    LookUp();
    EXPECT_THAT(Tags(), HasSubstr("foo"));
    EXPECT_EQ(Notice(), "");
    EXPECT_FALSE(RebuildButton().isVisible());
}

TEST_F(TagsStory, TagsAreNotWrittenThroughALinkInTheTree)
{
    home.Write(".bash_aliases", "alias ll='ls -l'\n");
    fs::create_symlink(home / ".bash_aliases", home / "T/tags.tmp");
    LookUp();
    EXPECT_EQ(Content(home / ".bash_aliases"), "alias ll='ls -l'\n");
    EXPECT_EQ(Tags(), kOldTags);
    EXPECT_THAT(Notice(), AllOf(HasSubstr(home / "T/tags was not made"),
                                HasSubstr(home / "T/tags.tmp is a link to " + (home / ".bash_aliases"))));
    Update();
    SettleBackground();
    EXPECT_EQ(Content(home / ".bash_aliases"), "alias ll='ls -l'\n");
    EXPECT_EQ(Tags(), kOldTags);
}

TEST_F(TagsStory, AnotherProjectsTagsAreRebuiltOnlyOnRequest)
{
    fs::create_directory(home / "linked");
    fs::create_symlink(home / "T/tags", home / "linked/tags");
    home.Write("linked/empty.c", "int bar;");
    Start({home.Write("linked/main.c", "bar\n")});
    SettleBackground();
    View().GoTo(1);
    Press("F12");
    SettleBackground();
    Settle();
    EXPECT_EQ(Tags(), kOldTags);
    EXPECT_THAT(Notice(), AllOf(HasSubstr(home / "T/tags is out of date"), HasSubstr("is a link to it")));
    ASSERT_TRUE(RebuildButton().isVisible());
    RebuildButton().click();
    EXPECT_EQ(Notice(), "");
    EXPECT_FALSE(RebuildButton().isVisible());
    EXPECT_TRUE(Until([this] { return Tags() != kOldTags; }));
    EXPECT_THAT(Tags(), HasSubstr("foo"));
}

TEST_F(TagsStory, AFailureIsReportedWithItsLogFile)
{
    UseProgram("echo 'no such language' >&2; exit 2\n");
    LookUp();
    EXPECT_EQ(Tags(), kOldTags);
    EXPECT_THAT(Notice(), AllOf(HasSubstr("status 2"), HasSubstr(wren::TagsKeeper::LogFile())));
    EXPECT_THAT(Content(wren::TagsKeeper::LogFile()), AllOf(HasSubstr("executing "), HasSubstr("no such language")));
    UseProgram("cat >/dev/null; printf 'foo\\ta.c\\t1;\"\\tv\\n' >\"$t\"\n");
    TheEditor().Actions().documents.Open(home / "T/main.c");
    Update();
    SettleBackground();
    Settle();
    EXPECT_THAT(Tags(), HasSubstr("foo"));
    EXPECT_EQ(Notice(), "") << "it no longer applies";
}

TEST_F(TagsStory, QuittingAsksWhileTagsAreBeingMade)
{
    const Fifo began;
    const Fifo goOn;
    UseProgram("echo half >\"$t\"; echo $$ >'" + began.Path() + "'; read line <'" + goOn.Path() + "'\n");
    Start({home / "T/main.c"});
    SettleBackground();
    Update();
    const pid_t program = std::stoi(began.ReadLine(::getpid()));
    hands.AnswerNextAlert("No");
    EXPECT_FALSE(Quit());
    EXPECT_THAT(hands.TakeHeard(),
                ElementsAre(AllOf(HasSubstr("These tags are being made"), HasSubstr(home / "T/tags"))));
    EXPECT_EQ(::kill(program, 0), 0);
    hands.AnswerNextAlert("Yes");
    EXPECT_TRUE(Quit());
    EXPECT_NE(::kill(program, 0), 0) << "it was stopped";
    EXPECT_EQ(Tags(), kOldTags);
    EXPECT_FALSE(fs::exists(home / "T/tags.tmp"));
    EXPECT_FALSE(fs::exists(home / "T/.tags.lock"));
}

TEST_F(TagsStory, WhatIsBeingMadeCanBeStoppedAndMadeLater)
{
    UseProgram("cat >/dev/null; echo begun > '" + (home / "begun") + "'; exec sleep 1000\n");
    Start({home / "T/main.c"});
    SettleBackground();
    QToolButton& stop = *TheEditor().Window().findChild<QToolButton*>("stopTags");
    EXPECT_TRUE(stop.isHidden());
    Update();
    EXPECT_TRUE(Until([this] { return !Content(home / "begun").empty(); }));
    EXPECT_TRUE(Until([&stop] { return !stop.isHidden(); }));
    stop.click();
    EXPECT_TRUE(Until([this] { return Status().find("Stopped") == 0; }));
    EXPECT_TRUE(Until([&stop] { return stop.isHidden(); }));
    EXPECT_EQ(Tags(), kOldTags);
    EXPECT_FALSE(fs::exists(home / "T/tags.tmp"));
    UseProgram("cat >/dev/null; printf 'new\\ta.c\\t1;\"\\tv\\n' >\"$t\"\n");
    Update();
    EXPECT_TRUE(Until([this] { return Tags() == "new\ta.c\t1;\"\tv\n"; })) << "later runs begin";
    SettleBackground();
}

TEST_F(TagsStory, ManyRequestsShareOneRun)
{
    const Fifo began;
    const Fifo goOn;
    const std::string runs = home / "runs";
    UseProgram("cat >/dev/null; echo run >>'" + runs + "'; echo $$ >'" + began.Path() + "'; read line <'" +
               goOn.Path() + "'; printf 'foo\\ta.c\\t1;\"\\tv\\n' >\"$t\"\n");
    Start({home / "T/main.c"});
    SettleBackground();
    Update();
    began.ReadLine(::getpid());
    const EndedRequests others; // each joins the run, which waits
    for (int request = 0; request < 14; ++request)
        Update();
    ASSERT_TRUE(Until([&] { return others.Count() == 14; }));
    goOn.WriteLine("go on");
    SettleBackground();
    EXPECT_EQ(Content(runs), "run\n");
    EXPECT_THAT(Tags(), HasSubstr("foo"));
}

TEST_F(TagsStory, AnUpdateCoversAllSuffixesOfTheFamily)
{
    const std::string sources = home / "sources";
    UseProgram("cat >'" + sources + "'; printf 'foo\\ta.c\\t1;\"\\tv\\n' >\"$t\"\n");
    const char* const kSuffixes[] = {"h", "hh", "hpp", "hxx", "inl", "ipp", "tpp", "cc", "cp", "cpp", "cxx", "m", "mm"};
    for (const std::string suffix : kSuffixes)
        home.Write("T/of_" + suffix + "." + suffix, "int " + suffix + ";\n");
    home.Write("T/other.txt", "int other;\n");
    Start({home / "T/main.c"});
    SettleBackground();
    Update();
    SettleBackground();
    for (const std::string suffix : kSuffixes)
        EXPECT_THAT(Content(sources), HasSubstr("of_" + suffix + "." + suffix + "\n"));
    EXPECT_THAT(Content(sources), Not(HasSubstr("other.txt")));
}

TEST_F(TagsStory, TheStatusLineSaysWhichTagsServeTheText)
{
    fs::create_directories(home / "T/deep/er");
    Start({home.Write("T/deep/er/x.c", "int x;\n"), home.Write("alone/y.c", "int y;\n")});
    EXPECT_EQ(ServingTags(), "No tags");
    Press("Ctrl+PgUp");
    EXPECT_EQ(ServingTags(), "Tags: ~/T/tags");
    home.Write("T/deep/tags", kOldTags);
    ComeBack();
    EXPECT_EQ(ServingTags(), "Tags: ~/T/deep/tags");
    home.Write("Library/Caches/SystemHeaderTags", kOldTags);
    Press("Ctrl+PgDown");
    EXPECT_EQ(ServingTags(), "Tags: the system's");
}

TEST_F(TagsStory, GeneratingTagsInASubdirectoryOffersTheProjects)
{
    fs::remove(home / "T/tags");
    fs::create_directory(home / "T/.git");
    Start({home.Write("T/db/x.c", "foo\n")});
    hands.AnswerNextAlert("Generate tags");
    Press("F12");
    SettleBackground();
    Settle();
    hands.TakeHeard();
    EXPECT_FALSE(fs::exists(home / "T/db/tags")) << "it would hide the project's";
    EXPECT_THAT(Notice(), HasSubstr("Tags in ~/T/db would serve only the texts there"));
    ASSERT_NE(NoticeButton(1), nullptr);
    EXPECT_EQ(NoticeButton(0)->text(), "Make Tags in ~/T");
    EXPECT_EQ(NoticeButton(1)->text(), "Make Tags in ~/T/db");
    NoticeButton(0)->click();
    SettleBackground();
    Settle();
    EXPECT_EQ(Notice(), "");
    EXPECT_THAT(Tags(), HasSubstr("foo"));
    EXPECT_FALSE(fs::exists(home / "T/db/tags"));
    EXPECT_EQ(ServingTags(), "Tags: ~/T/tags");
}

TEST_F(TagsStory, TheUserMayStillGenerateTagsInASubdirectory)
{
    fs::remove(home / "T/tags");
    fs::create_directory(home / "T/.git");
    Start({home.Write("T/db/x.c", "foo\n")});
    hands.AnswerNextAlert("Generate tags");
    Press("F12");
    Settle();
    hands.TakeHeard();
    ASSERT_NE(NoticeButton(1), nullptr);
    NoticeButton(1)->click();
    SettleBackground();
    Settle();
    EXPECT_TRUE(fs::exists(home / "T/db/tags"));
    EXPECT_FALSE(fs::exists(home / "T/tags"));
}

TEST_F(TagsStory, GeneratingTagsAtTheTopOfTheProjectAsksNothingMore)
{
    fs::remove(home / "T/tags");
    fs::create_directory(home / "T/.git");
    Start({home / "T/main.c"});
    hands.AnswerNextAlert("Generate tags");
    Press("F12");
    SettleBackground();
    Settle();
    hands.TakeHeard();
    EXPECT_TRUE(fs::exists(home / "T/tags"));
}

TEST_F(TagsStory, ALinkToADirectoryServesNoText)
{
    fs::remove(home / "T/tags");
    fs::create_directory(home / "elsewhere");
    fs::create_directory_symlink(home / "elsewhere", home / "T/tags");
    Start({home / "T/main.c"});
    EXPECT_EQ(ServingTags(), "No tags");
    EXPECT_THAT(Notice(), HasSubstr(home / "T/tags is a directory"));
}

TEST_F(TagsStory, ADirectoryCalledTagsIsSaidAndKeepsItsContent)
{
    fs::remove(home / "T/tags");
    home.Write("T/tags/mine.txt", "mine\n");
    Start({home / "T/main.c"});
    EXPECT_THAT(Notice(), AllOf(HasSubstr(home / "T/tags is a directory"), HasSubstr("Rename it")));
    EXPECT_EQ(ServingTags(), "No tags");
    Update();
    SettleBackground();
    Settle();
    EXPECT_THAT(Notice(), HasSubstr(home / "T/tags was not made"));
    EXPECT_EQ(Content(home / "T/tags/mine.txt"), "mine\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(home / "T/tags"), fs::directory_iterator()), 1);
    EXPECT_FALSE(fs::exists(home / "T/tags.tmp"));
}
