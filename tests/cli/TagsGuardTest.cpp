// wren tags in hostile trees, and with failing commands.
#include "tests/cli/TagsCommandFixture.h"
#include "tests/support/ShellWord.h"

#include <cstdlib>
#include <sys/stat.h>

TEST_F(TagsCommand, KeepsThePermissionsOfOldTags)
{
    for (const auto mode : {0600, 0640, 0444}) {
        fs::permissions(tree.Write("project/tags", kOldTags), fs::perms(mode));
        EXPECT_EQ(Run({"project"}).status, 0);
        EXPECT_FALSE(HasText(Content(Tags()), "old"));
        EXPECT_EQ(fs::status(Tags()).permissions(), fs::perms(mode)) << std::oct << mode;
        fs::remove(Tags());
    }
}

TEST_F(TagsCommand, RefusesALinkAndNamesItsTarget)
{
    struct Case {
        const char* leaf;
        std::string target;
        const char* why;
    };
    tree.Write("other/tags", kOldTags);
    tree.Write("victim/.bash_aliases", "alias ll='ls -l'\n");
    tree.Write("victim/empty", "");
    const std::string before = RunProgram({"/bin/ls", "-lR", tree / "victim", tree / "other"}, tree.Path()).output;
    for (const Case& c :
         {Case{"tags", tree / "other/tags", "another project's tags"},
          Case{"tags", "../other", "a directory, into which mv would move"},
          Case{"tags", tree / "victim/nothing", "a link to nothing"},
          Case{"tags.tmp", tree / "victim/.bash_aliases", "a file of the user's"},
          Case{"tags.tmp", tree / "victim/empty", "an empty file of the user's"},
          Case{"tags.tmp", tree / "other/tags", "a real tags file"}, Case{"tags.tmp", tree / "victim", "a directory"},
          Case{"tags.tmp", tree / "victim/nothing", "a file that is made by writing to it"}}) {
        const std::string link = (tree / "project/") + c.leaf;
        fs::create_symlink(c.target, link);
        const ProgramRun run = Run({"project"});
        EXPECT_EQ(run.status, 1) << c.why;
        EXPECT_TRUE(HasText(run.errors, link + " is a link to " + c.target)) << c.why << ": " << run.errors;
        EXPECT_TRUE(fs::is_symlink(link)) << c.why;
        EXPECT_EQ(RunProgram({"/bin/ls", "-lR", tree / "victim", tree / "other"}, tree.Path()).output, before) << c.why;
        fs::remove(link);
    }
    fs::create_symlink("../other/tags", Tags());
    EXPECT_TRUE(HasText(Run({"project"}).errors, "wren tags " + (tree / "other"))) << "the remedy";
}

TEST_F(TagsCommand, LeavesOtherHardLinksOfTheTagsFileUnchanged)
{
    tree.Write("home/mine", kOldTags);
    for (const std::string& name : {Tags(), UnfinishedTags()}) {
        fs::create_hard_link(tree / "home/mine", name);
        EXPECT_EQ(Run({"project"}).status, 0) << name;
        EXPECT_EQ(Content(tree / "home/mine"), kOldTags) << name;
        EXPECT_TRUE(HasText(Content(Tags()), "a.h")) << name;
        fs::remove(Tags());
    }
}

TEST_F(TagsCommand, DoesNotWaitForAPipeInPlaceOfTheLock)
{
    ASSERT_EQ(::mkfifo((tree / "project/.tags.lock").c_str(), 0600), 0);
    EXPECT_EQ(Run({"project"}).status, 0);
    EXPECT_TRUE(fs::is_fifo(tree / "project/.tags.lock")) << "it is somebody's";
}

// A wrapper around find with one line of shell.
class TagsFromFind : public TagsCommand {
protected:
    void UseFind(const std::string& script)
    {
        fs::permissions(tree.Write("bin/find", "#!/bin/sh\n" + script), fs::perms::owner_all);
        environment["PATH"] = (tree / "bin") + ":" + std::getenv("PATH");
        tree.Write("project/tags", kOldTags);
    }
};

TEST_F(TagsFromFind, KeepTheOldFileWhenTheListWasCutShort)
{
    struct Case {
        std::string script;
        const char* said;
        const char* why;
    };
    for (const Case& c : {
             Case{"kill -KILL $$\n", "ended by signal 9", "killed before the first name"},
             Case{"echo \"$1/a.h\"; kill -KILL $$\n", "ended by signal 9", "killed behind the first name"},
             Case{"exit 1\n", "status 1", "failed without a word"},
             Case{"echo \"$1/a.h\"; echo \"find: '$1/deep': Input/output error\" >&2; exit 1\n", "status 1",
                  "the disk failed"},
             Case{"exit 127\n", "status 127", "a part of it is not there"},
             Case{"echo \"find: '$1': Permission denied\" >&2; exit 1\n", "listed no file", "nothing may be read"},
         }) {
        UseFind(c.script);
        const ProgramRun run = Run({"project"});
        EXPECT_EQ(run.status, 1) << c.why;
        EXPECT_TRUE(HasText(run.errors, c.said)) << c.why << ": " << run.errors;
        ExpectOldTags(c.why);
    }
}

TEST_F(TagsFromFind, CoverTheRestWhenADirectoryIsUnreadable)
{
    UseFind("echo \"$1/a.h\"; echo \"find: '$1/deep': Permission denied\" >&2\n"
            "echo \"find: '$1/gone.h': No such file or directory\" >&2; exit 1\n");
    const ProgramRun run = Run({"project"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(HasText(run.errors, "deep': Permission denied")) << run.errors;
    EXPECT_EQ(WithoutSeconds(run.output), "tags of 1 file: 1 tag, " + Tags() + "\n");
}

TEST_F(TagsFromFind, RunsFindInTheCLocale)
{
    UseFind("echo \"$LC_ALL\" >" + ShellWord(tree / "language") + "; exec /usr/bin/find \"$@\"\n");
    environment["LC_ALL"] = "de_DE.UTF-8";
    EXPECT_EQ(Run({"project"}).status, 0);
    EXPECT_EQ(Content(tree / "language"), "C\n");
}

TEST_F(TagsFromFind, ShowsOnlyTheFirstOfVeryManyComplaints)
{
    UseFind("echo \"$1/a.h\"; seq -f \"find: '$1/deep%.0f': Permission denied\" 20000 >&2; exit 1\n");
    const ProgramRun run = Run({"project"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(HasText(run.errors, "': Permission denied\nfind: and more complaints")) << run.errors.size();
    EXPECT_LT(run.errors.size(), 100'000u);
}

TEST_F(TagsFromFind, ShowNoControlCharactersOfNames)
{
    UseFind("printf \"find: 'a\\033[2Jb': Permission denied\\n\" >&2; exec /usr/bin/find \"$@\"\n");
    const ProgramRun run = Run({"project"});
    EXPECT_TRUE(HasText(run.errors, "a?[2Jb")) << run.errors;
}

// With few descriptors left it fails with the reason; a signal still ends it.
TEST_F(TagsCommand, SaysWhyItFailsWithTooFewDescriptors)
{
    tree.Write("project/tags", kOldTags);
    for (int descriptors = 4; descriptors <= 12; ++descriptors) {
        std::vector<std::string> command = {"/usr/bin/prlimit", "--nofile=" + std::to_string(descriptors)};
        for (const std::string& word : Command({"project"}))
            command.push_back(word);
        const ProgramRun run = RunProgram(command, tree.Path(), environment);
        EXPECT_EQ(run.signal, 0) << descriptors << ": " << run.errors;
        EXPECT_NE(Content(Tags()), "") << descriptors;
        EXPECT_TRUE(run.status == 0 || !run.errors.empty()) << descriptors;
        EXPECT_FALSE(fs::exists(UnfinishedTags())) << descriptors;
    }
}
