// An index of a real git repository.
#include "tests/support/GitRepository.h"
#include "tests/symbols/IndexStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace symbols {

namespace {

namespace fs = std::filesystem;

} // namespace

TEST(IndexOfGit, FollowsCheckouts)
{
    if (!GitRepository::IsPossible())
        GTEST_SKIP() << "git is not installed";
    const GitRepository repository;
    repository.Write("a.c", "int a;\n");
    repository.Write("common.c", "int common;\n");
    repository.Commit("one");
    repository.Git({"checkout", "-q", "-b", "other"});
    fs::remove(repository.Top() + "/a.c");
    repository.Write("b/b.c", "int b;\n");
    repository.Write("common.c", "int common2;\n");
    repository.Commit("two");
    IndexStory story(repository.Top());
    story.Update();
    for (const char* branch : {"main", "other", "main~0", "other"}) {
        repository.Git({"checkout", "-q", branch});
        story.Update();
        story.ExpectAsFresh();
    }
    EXPECT_EQ(story.AnswerFor("common2"), "common2: common.c:1 in common.c");
    EXPECT_EQ(story.AnswerFor("a"), "a: in");
}

TEST(IndexOfGit, TakesAnIgnoredFileOnceItIsTracked)
{
    if (!GitRepository::IsPossible())
        GTEST_SKIP() << "git is not installed";
    const GitRepository repository;
    repository.Write(".gitignore", "*.c\n");
    repository.Write("a.c", "int a;\n");
    IndexStory story(repository.Top());
    story.Update();
    EXPECT_EQ(story.AnswerFor("a"), "a: in");
    repository.Git({"add", "-f", "a.c"});
    story.Update();
    EXPECT_EQ(story.AnswerFor("a"), "a: a.c:1 in a.c");
}

TEST(IndexOfGit, TakesSubmodulesWithTheirOwnIgnoreRules)
{
    if (!GitRepository::IsPossible())
        GTEST_SKIP() << "git is not installed";
    const GitRepository library({}, "library");
    library.Write(".gitignore", "made.c\n");
    library.Write("b.c", "int b;\n");
    library.Commit("one");
    const GitRepository repository;
    repository.Write("a.c", "int a;\n");
    const ProgramRun added =
        repository.Run({"-c", "protocol.file.allow=always", "submodule", "--quiet", "add", library.Top(), "library"});
    ASSERT_EQ(added.status, 0) << added.errors;
    repository.Write("library/made.c", "int made;\n");
    repository.Commit("with a submodule");
    IndexStory story(repository.Top());
    story.Update();
    EXPECT_EQ(story.AnswerFor("a"), "a: a.c:1 in a.c");
    EXPECT_EQ(story.AnswerFor("b"), "b: library/b.c:1 in library/b.c");
    EXPECT_EQ(story.AnswerFor("made"), "made: in");
}

// Everything in a configuration that makes git start programs.
TEST(IndexOfGit, RunsNothingThatTheTreeNames)
{
    if (!GitRepository::IsPossible())
        GTEST_SKIP() << "git is not installed";
    const GitRepository repository;
    const std::string marker = repository.Home() + "/marker";
    const std::string script = repository.Home() + "/script";
    std::ofstream(script) << "#!/bin/sh\ntouch '" << marker << "'\n";
    fs::permissions(script, fs::perms::owner_all);
    repository.Write("a.c", "int a;\n");
    repository.Write(".gitattributes", "* filter=evil diff=evil merge=evil\n");
    repository.Commit("one");
    std::ofstream(repository.Home() + "/included") << "[core]\n\tpager = " << script << "\n";
    for (const char* key : {"core.fsmonitor",
                            "core.pager",
                            "core.editor",
                            "core.sshCommand",
                            "core.gitProxy",
                            "core.askPass",
                            "diff.external",
                            "filter.evil.clean",
                            "filter.evil.smudge",
                            "filter.evil.process",
                            "diff.evil.command",
                            "diff.evil.textconv",
                            "merge.evil.driver",
                            "alias.ls-files",
                            "alias.status",
                            "gpg.program",
                            "credential.helper",
                            "uploadpack.packObjectsHook",
                            "core.alternateRefsCommand",
                            "sequence.editor"})
        repository.Git({"config", key, script});
    repository.Git({"config", "include.path", repository.Home() + "/included"});
    repository.Git({"config", "core.hooksPath", repository.Home()});
    for (const char* hook : {"post-index-change", "fsmonitor-watchman", "post-checkout", "pre-auto-gc"})
        fs::create_symlink(script, repository.Home() + "/" + hook);
    repository.Write("b.c", "int b;\n");
    fs::remove(marker); // the commands above may have run it

    IndexStory story(repository.Top());
    story.Update();
    story.Write("a.c", "int a2;\n");
    story.UpdateFiles({"a.c"});
    story.Update();
    EXPECT_EQ(story.AnswerFor("b"), "b: b.c:1 in b.c");
    EXPECT_FALSE(fs::exists(marker));
    repository.Git({"status"});
    EXPECT_TRUE(fs::exists(marker)) << "git itself runs it, so the trap works";
}

} // namespace symbols
