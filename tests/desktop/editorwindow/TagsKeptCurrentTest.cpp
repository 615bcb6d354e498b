// The tags file of a project, while its texts are edited.
#include "tests/desktop/editorwindow/MeaningsStory.h"
#include "tests/support/RunProgram.h"

#include <filesystem>

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

class TagsKeptCurrent : public MeaningsStory {
protected:
    TagsKeptCurrent() { program = WREN_PROGRAM; }

    void MakeTags() const
    {
        const ProgramRun run = RunProgram({WREN_PROGRAM, "tags", home / "project"}, home.Path());
        ASSERT_EQ(run.status, 0) << run.errors;
    }
    std::string Tags() const { return Content(home / "project/tags"); }
    void SaveAnotherFunction()
    {
        Type("int fresh() { return 1; }\n");
        Press("Ctrl+S");
    }
    bool UntilNothingIsMade()
    {
        return Until([this] { return !TheEditor().KeepsTagsBusy(); });
    }
};

} // namespace

TEST_F(TagsKeptCurrent, FollowWhatIsSaved)
{
    StartAt("|int old();\n");
    MakeTags();
    EXPECT_THAT(Tags(), Not(HasSubstr("fresh\t")));
    SaveAnotherFunction();
    EXPECT_TRUE(Until([this] { return Tags().find("fresh\t") != std::string::npos; }));
    EXPECT_TRUE(UntilNothingIsMade());
    EXPECT_FALSE(fs::exists(home / "project/tags.tmp"));
}

TEST_F(TagsKeptCurrent, AreNotMadeWhereThereAreNone)
{
    StartAt("|int old();\n");
    SaveAnotherFunction();
    EXPECT_FALSE(TheEditor().KeepsTagsBusy());
}

TEST_F(TagsKeptCurrent, AreMadeAtTheRootWhenTheUserWantsThemAlways)
{
    home.Write(".config/wren/settings", "WrenKeepTags always\n");
    StartAt("|int old();\n");
    SaveAnotherFunction();
    EXPECT_TRUE(Until([this] { return Tags().find("fresh\t") != std::string::npos; }));
}

TEST_F(TagsKeptCurrent, StayAsTheyAreWhenTheUserWantsThat)
{
    home.Write(".config/wren/settings", "WrenKeepTags never\n");
    StartAt("|int old();\n");
    MakeTags();
    SaveAnotherFunction();
    EXPECT_FALSE(TheEditor().KeepsTagsBusy());
}

TEST_F(TagsKeptCurrent, OfOtherProgramsAndOfLinksAreLeftAlone)
{
    StartAt("|int old();\n");
    home.Write("project/tags", "!_TAG_PROGRAM_NAME\tExuberant Ctags\t//\nold\tdraw.cpp\t1;\"\tp\n");
    SaveAnotherFunction();
    EXPECT_FALSE(TheEditor().KeepsTagsBusy()) << "another program's";
    MakeTags();
    fs::rename(home / "project/tags", home / "kept");
    fs::create_symlink(home / "kept", home / "project/tags");
    SaveAnotherFunction();
    EXPECT_FALSE(TheEditor().KeepsTagsBusy()) << "behind a link";
    fs::remove(home / "project/tags");
    fs::create_directory(home / "project/tags");
    SaveAnotherFunction();
    EXPECT_FALSE(TheEditor().KeepsTagsBusy()) << "a directory";
}

TEST_F(TagsKeptCurrent, TheEditorEndsWhileTheyAreMade)
{
    StartAt("|int old();\n");
    MakeTags();
    const std::string before = Tags();
    program = home.Write("slow", "#!/bin/sh\necho $$ > running\nexec sleep 1000\n");
    fs::permissions(program, fs::perms::owner_all);
    Start({home / "project/draw.cpp"});
    SaveAnotherFunction();
    EXPECT_TRUE(Until([this] { return Content(home / "running").ends_with('\n'); }));
    EXPECT_TRUE(Quit());
    Start();
    const std::string process = Content(home / "running");
    EXPECT_FALSE(fs::exists("/proc/" + process.substr(0, process.size() - 1))) << "it has ended with the editor";
    EXPECT_EQ(Tags(), before);
}
