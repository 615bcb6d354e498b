#include "symbols/Index.h"

#include "tests/support/Environment.h"
#include "tests/support/OrdinaryRights.h"
#include "tests/symbols/IndexStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace symbols {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;

} // namespace

TEST(Index, IsEmptyBeforeItsFirstUpdate)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    EXPECT_EQ(story.index->Current(), nullptr);
    const UpdateResult result = story.Update();
    EXPECT_TRUE(result.rebuilt);
    EXPECT_EQ(result.parsed, 1u);
    EXPECT_EQ(result.warning, "");
    EXPECT_EQ(story.AnswerFor("a"), "a: a.c:1 in a.c");
}

TEST(Index, OfATreeWithoutSourcesHasNoFiles)
{
    IndexStory story;
    EXPECT_TRUE(story.Update().rebuilt);
    EXPECT_EQ(DumpOf(story.index->Current()), "");
    EXPECT_FALSE(story.Update().rebuilt);
}

TEST(Index, ParsesOnlyWhatHasChanged)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Write("b.c", "int b;\n");
    story.Update();
    story.Write("b.c", "int b;\nint more;\n");
    story.Write("x/c.h", "struct C {};\n");
    const UpdateResult result = story.Update();
    EXPECT_EQ(result.parsed, 2u);
    EXPECT_FALSE(result.rebuilt);
    EXPECT_EQ(story.AnswerFor("more"), "more: b.c:2 in b.c");
    story.ExpectAsFresh();
}

TEST(Index, DoesNothingWhenNothingHasChanged)
{
    IndexStory story;
    MakeOld(story.Write("a.c", "int a;\n"));
    story.Update();
    const SnapshotPointer before = story.index->Current();
    const UpdateResult result = story.Update();
    EXPECT_EQ(result.parsed + result.removed, 0u);
    EXPECT_EQ(story.index->Current(), before);
}

TEST(Index, DoesNotParseAFileThatIsOnlyTouched)
{
    IndexStory story;
    MakeOld(story.Write("a.c", "int a;\n"));
    story.Update();
    MakeOld(story.Path("a.c"), 1800);
    EXPECT_EQ(story.Update().parsed, 0u);
    const SnapshotPointer touched = story.index->Current();
    EXPECT_EQ(story.Update().parsed, 0u);
    EXPECT_EQ(story.index->Current(), touched) << "the new time is known";
    story.ExpectAsFresh();
}

// Times are coarse: a second save may leave the time of the first.
TEST(Index, SeesAChangeThatLeavesSizeTimeAndInode)
{
    IndexStory story;
    const std::string path = story.Write("a.c", "int a;\n");
    story.Update();
    struct stat status;
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    story.Write("a.c", "int b;\n");
    const timespec times[2] = {status.st_atim, status.st_mtim};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    EXPECT_EQ(story.Update().parsed, 1u);
    EXPECT_EQ(story.AnswerFor("b"), "b: a.c:1 in a.c");
}

TEST(Index, SeesAChangeWithAnOlderTime)
{
    IndexStory story;
    MakeOld(story.Write("a.c", "int a;\n"));
    story.Update();
    MakeOld(story.Write("a.c", "int b;\n"), 7200);
    EXPECT_EQ(story.Update().parsed, 1u);
    story.ExpectAsFresh();
}

TEST(Index, ForgetsFilesThatAreGone)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Write("x/b.c", "int b;\n");
    story.Update();
    story.Remove("x");
    EXPECT_EQ(story.Update().removed, 1u);
    EXPECT_EQ(story.AnswerFor("b"), "b: in");
    story.ExpectAsFresh();
}

TEST(Index, FollowsRenamedAndExchangedFiles)
{
    IndexStory story;
    MakeOld(story.Write("a.c", "int a;\n"));
    MakeOld(story.Write("b.c", "int b;\n"));
    MakeOld(story.Write("x/c.c", "int c;\n"));
    story.Update();
    fs::rename(story.Path("a.c"), story.Path("t"));
    fs::rename(story.Path("b.c"), story.Path("a.c"));
    fs::rename(story.Path("t"), story.Path("b.c"));
    fs::rename(story.Path("x"), story.Path("y"));
    story.Update();
    EXPECT_EQ(story.AnswerFor("a"), "a: b.c:1 in b.c");
    EXPECT_EQ(story.AnswerFor("c"), "c: y/c.c:1 in y/c.c");
    story.ExpectAsFresh();
}

TEST(Index, FollowsAFileThatBecomesADirectoryAndBack)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Update();
    story.Remove("a.c");
    story.Write("a.c/b.c", "int b;\n");
    story.Update();
    EXPECT_EQ(story.AnswerFor("b"), "b: a.c/b.c:1 in a.c/b.c");
    story.ExpectAsFresh();
    story.Remove("a.c");
    story.Write("a.c", "int a;\n");
    story.Update();
    story.ExpectAsFresh();
}

TEST(Index, LeavesOutFilesThatCannotBeReadUntilTheyCan)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Write("b.c", "int b;\n");
    story.Update();
    fs::permissions(story.Path("a.c"), fs::perms::none);
    story.Write("a.c", "int a;\n");
    {
        const OrdinaryRights rights;
        fs::permissions(story.Path("a.c"), fs::perms::none);
        const UpdateResult result = story.Update();
        EXPECT_EQ(result.failed, 1u);
    }
    EXPECT_THAT(story.messages, testing::Contains(HasSubstr("a.c")));
    EXPECT_EQ(story.AnswerFor("a"), "a: in");
    fs::permissions(story.Path("a.c"), fs::perms::owner_all);
    story.Update();
    EXPECT_EQ(story.AnswerFor("a"), "a: a.c:1 in a.c");
    story.ExpectAsFresh();
}

TEST(Index, HasNoNewStateWhenOnlyUnreadableFilesAreNew)
{
    IndexStory story;
    MakeOld(story.Write("a.c", "int a;\n"));
    story.Update();
    const SnapshotPointer before = story.index->Current();
    fs::permissions(story.Write("b.c", "int b;\n"), fs::perms::none);
    const OrdinaryRights rights;
    for (int i = 0; i < 2; ++i) {
        const UpdateResult result = story.Update();
        EXPECT_EQ(result.failed, 1u);
        EXPECT_EQ(result.parsed + result.removed, 0u);
        EXPECT_EQ(story.index->Current(), before);
    }
}

TEST(Index, CountsFilesThatCrashCtags)
{
    IndexStory story;
    const std::string ctags = story.tree.Write("ctags", "#!/bin/sh\nread line\nkill -SEGV $$\n");
    fs::permissions(ctags, fs::perms::owner_all);
    story.Write("a.c", "int a;\n");
    IndexOptions options = OptionsFor(story.top, story.Cache());
    options.tagging.ctags.program = ctags;
    Index index(options);
    const base::Result<UpdateResult> result = index.Update(story.Listener(), story.cancel);
    ASSERT_TRUE(result) << result.Failure().Message();
    EXPECT_EQ(result->failed, 1u);
    EXPECT_EQ(AnswerFor(index.Current(), "a"), "a: in a.c") << "the names are known all the same";
    EXPECT_THAT(story.messages, testing::Contains(HasSubstr("a.c")));
}

TEST(Index, IsSharedByAllThatOpenIt)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    Index other(OptionsFor(story.top, story.Cache()));
    story.Update();
    EXPECT_EQ(DumpOf(other.Current()), DumpOf(story.index->Current()));
    story.Write("b.c", "int b;\n");
    ASSERT_TRUE(other.Update({}, story.cancel));
    EXPECT_EQ(story.AnswerFor("b"), "b: b.c:1 in b.c");
    EXPECT_EQ(story.Update().parsed, 0u);
}

TEST(Index, IsRebuiltWhenOthersParseTheSources)
{
    IndexStory story;
    story.Write("a.c", "MACRO int a;\n");
    story.Update();
    IndexOptions options = OptionsFor(story.top, story.Cache());
    options.tagging.ctags.ignored = "MACRO";
    Index other(options);
    const base::Result<UpdateResult> result = other.Update({}, story.cancel);
    ASSERT_TRUE(result);
    EXPECT_TRUE(result->rebuilt);
    EXPECT_EQ(result->parsed, 1u);
    EXPECT_TRUE(story.Update().rebuilt);
}

TEST(Index, IsRebuiltWhenItsFilesAreDamaged)
{
    IndexStory story;
    for (int i = 0; i < 20; ++i)
        story.Write("a" + std::to_string(i) + ".c", "int a" + std::to_string(i) + ";\n");
    story.Update();
    const std::string before = DumpOf(story.index->Current());
    for (const auto& entry : fs::directory_iterator(story.index->Directory()))
        if (entry.is_regular_file() && entry.file_size() > 0)
            std::ofstream(entry.path(), std::ios::binary | std::ios::trunc) << std::string(entry.file_size(), 'x');
    story.index.emplace(OptionsFor(story.top, story.Cache()));
    EXPECT_TRUE(story.Update().rebuilt);
    EXPECT_EQ(DumpOf(story.index->Current()), before);
}

// In one process of ctags, which is asked about a few files at a time.
TEST(Index, GoesOnFromWhereAFirstUpdateWasCancelled)
{
    constexpr size_t kFiles = 60;
    IndexStory story;
    for (size_t i = 0; i < kFiles; ++i)
        MakeOld(story.Write("f" + std::to_string(i) + ".c", "int v" + std::to_string(i) + ";\n"));
    base::CancelToken cancelled;
    Index::Listener listener;
    listener.progress = [&](const Progress& progress) {
        if (progress.step == Progress::Step::Parsing && progress.done >= kFiles / 2)
            cancelled.Cancel();
    };
    listener.keepsPart = [] { return true; };
    ASSERT_FALSE(story.index->Update(listener, cancelled));
    EXPECT_EQ(story.index->Current(), nullptr);
    story.index.emplace(OptionsFor(story.top, story.Cache()));
    story.Remove("f0.c");
    const UpdateResult result = story.Update();
    EXPECT_TRUE(result.rebuilt);
    EXPECT_LE(result.parsed, kFiles / 2);
    story.ExpectAsFresh();
}

TEST(Index, KeepsItsStateWhenAnUpdateIsCancelled)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    base::CancelToken cancelled;
    cancelled.Cancel();
    EXPECT_FALSE(story.index->Update({}, cancelled));
    EXPECT_EQ(story.index->Current(), nullptr);
    story.Update();
    story.Write("a.c", "int b;\n");
    base::CancelToken later;
    const Index::Listener listener = {[&](const Progress& progress) {
                                          if (progress.step == Progress::Step::Parsing)
                                              later.Cancel();
                                      },
                                      nullptr};
    EXPECT_FALSE(story.index->Update(listener, later));
    EXPECT_EQ(story.AnswerFor("a"), "a: a.c:1 in a.c");
}

TEST(Index, ReportsItsProgress)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Write("b.c", "int b;\n");
    std::vector<Progress> steps;
    ASSERT_TRUE(
        story.index->Update({[&](const Progress& progress) { steps.push_back(progress); }, nullptr}, story.cancel));
    ASSERT_FALSE(steps.empty());
    EXPECT_EQ(steps.back().step, Progress::Step::Writing);
    EXPECT_EQ(steps.back().done, 2u);
    for (size_t i = 1; i < steps.size(); ++i)
        EXPECT_LE(steps[i - 1].step, steps[i].step);
}

TEST(Index, IsKeptInMemoryWhenItsDirectoryCannotBeWritten)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    fs::create_directory(story.Cache());
    fs::permissions(story.Cache(), fs::perms::owner_read | fs::perms::owner_exec);
    {
        const OrdinaryRights rights;
        const UpdateResult result = story.Update();
        EXPECT_TRUE(result.inMemory);
        EXPECT_THAT(result.warning, HasSubstr("Permission denied"));
        EXPECT_EQ(story.AnswerFor("a"), "a: a.c:1 in a.c");
        story.Write("b.c", "int b;\n");
        EXPECT_EQ(story.Update().parsed, 1u);
        EXPECT_EQ(story.AnswerFor("b"), "b: b.c:1 in b.c");
    }
    fs::permissions(story.Cache(), fs::perms::owner_all);
    story.ExpectAsFresh();
}

TEST(Index, IsKeptInMemoryWithoutACacheDirectory)
{
    SetVariable("XDG_CACHE_HOME", nullptr);
    SetVariable("HOME", nullptr);
    const TempDirectory tree;
    tree.Write("a.c", "int a;\n");
    Index index(OptionsFor(tree.Path(), ""));
    const base::CancelToken cancel;
    const base::Result<UpdateResult> result = index.Update({}, cancel);
    ASSERT_TRUE(result);
    EXPECT_TRUE(result->inMemory);
    EXPECT_EQ(AnswerFor(index.Current(), "a"), "a: a.c:1 in a.c");
}

TEST(Index, FailsWithoutItsRootAndKeepsItsState)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Update();
    fs::rename(story.top, story.tree / "elsewhere");
    const base::Result<UpdateResult> result = story.index->Update({}, story.cancel);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.Failure().Message(), "cannot read " + story.top + ": No such file or directory");
    EXPECT_EQ(story.AnswerFor("a"), "a: a.c:1 in a.c");
}

TEST(Index, CanBeRemoved)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Update();
    const SnapshotPointer kept = story.index->Current();
    ASSERT_TRUE(story.index->Remove());
    EXPECT_EQ(story.index->Current(), nullptr);
    EXPECT_EQ(AnswerFor(kept, "a"), "a: a.c:1 in a.c");
    EXPECT_TRUE(story.Update().rebuilt);
}

TEST(Index, OfTheSystemNamesFilesFromTheRootDirectory)
{
    IndexStory story;
    story.Write("include/a.h", "int a;\n");
    story.Write("include/vector", "// -*- C++ -*-\nclass Vector {};\n");
    story.Write("include/README", "class of its own\n");
    IndexOptions options = OptionsFor("/", story.Cache());
    options.content = IndexOptions::Content::SystemHeaders;
    options.directories = {story.Path("include")};
    Index index(options);
    const base::Result<UpdateResult> result = index.Update({}, story.cancel);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->parsed, 2u);
    const std::string path = story.Path("include/vector").substr(1);
    EXPECT_EQ(AnswerFor(index.Current(), "Vector"), "Vector: " + path + ":2 in " + path);
    EXPECT_EQ(index.Update({}, story.cancel)->parsed, 0u);
}

TEST(Index, OfTheSystemForgetsAFileThatIsNoHeaderAnyMore)
{
    IndexStory story;
    story.Write("include/vector", "// -*- C++ -*-\nclass Vector {};\n");
    IndexOptions options = OptionsFor("/", story.Cache());
    options.content = IndexOptions::Content::SystemHeaders;
    options.directories = {story.Path("include")};
    Index index(options);
    ASSERT_TRUE(index.Update({}, story.cancel));
    story.Write("include/vector", "class Vector of other things\n");
    const base::Result<UpdateResult> result = index.Update({}, story.cancel);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->removed, 1u);
    EXPECT_EQ(AnswerFor(index.Current(), "Vector"), "Vector: in");
    EXPECT_EQ(index.Update({}, story.cancel)->removed, 0u);
}

TEST(UpdateFiles, ReadsOnlyTheseFiles)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Write("b.c", "int b;\n");
    story.Update();
    story.Write("a.c", "int a2;\n");
    story.Write("b.c", "int b2;\n");
    story.Write("c.c", "int c;\n");
    EXPECT_EQ(story.UpdateFiles({"a.c"}).parsed, 1u);
    EXPECT_EQ(story.AnswerFor("a2"), "a2: a.c:1 in a.c");
    EXPECT_EQ(story.AnswerFor("b2"), "b2: in");
    EXPECT_EQ(story.UpdateFiles({"b.c", "c.c", "c.c"}).parsed, 2u);
    story.ExpectAsFresh();
    story.Remove("b.c");
    EXPECT_EQ(story.UpdateFiles({"b.c"}).removed, 1u);
    story.ExpectAsFresh();
}

TEST(UpdateFiles, TakesNoFilesThatAWalkWouldLeaveOut)
{
    IndexStory story;
    story.Write(".git/HEAD", "ref: refs/heads/main\n");
    story.Write(".gitignore", "b.c\n");
    story.Update();
    story.Write("a.c", "int a;\n");
    story.Write("b.c", "int b;\n");
    story.Write("c.txt", "int c;\n");
    EXPECT_EQ(story.UpdateFiles({"a.c", "b.c", "c.txt", "none.c", "/usr/include/stdio.h"}).parsed, 1u);
    story.ExpectAsFresh();
}

TEST(UpdateFiles, WalksForWhatConcernsOtherFiles)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Write("x/b.c", "int b;\n");
    fs::create_hard_link(story.Write("k.c", "int k;\n"), story.Path("m.c"));
    story.Update();
    story.Write(".wrenignore", "a.c\n");
    story.UpdateFiles({".wrenignore"});
    story.ExpectAsFresh();
    story.Write("y/c.c", "int c;\n");
    story.UpdateFiles({"y"});
    story.ExpectAsFresh();
    story.Remove("x");
    story.UpdateFiles({"x"});
    story.ExpectAsFresh();
    story.Remove("y");
    story.UpdateFiles({"y", "never.c"});
    story.ExpectAsFresh();
    story.Remove("k.c"); // "m.c" is the file's only path now
    story.UpdateFiles({"k.c"});
    EXPECT_EQ(story.AnswerFor("k"), "k: m.c:1 in m.c");
    story.ExpectAsFresh();
}

TEST(UpdateFiles, MakesAnIndexWhenThereIsNone)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Write("b.c", "int b;\n");
    EXPECT_TRUE(story.UpdateFiles({"a.c"}).rebuilt);
    story.ExpectAsFresh();
}

} // namespace symbols
