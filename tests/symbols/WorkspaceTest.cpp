#include "symbols/Workspace.h"

#include "tests/symbols/IndexStory.h"

#include <gtest/gtest.h>

#include <thread>

namespace symbols {

namespace {

namespace fs = std::filesystem;

WorkspaceOptions OptionsOf(const IndexStory& story)
{
    return {story.top, story.Cache(), false, TestSettings()};
}

} // namespace

TEST(Workspace, HasAStateBeforeThereIsAnIndex)
{
    const IndexStory story;
    const Workspace workspace(OptionsOf(story));
    ASSERT_NE(workspace.Current(), nullptr);
    EXPECT_EQ(workspace.Current()->Totals().files, 0u);
}

TEST(Workspace, ShowsUpdatesOfItsIndex)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    Workspace workspace(OptionsOf(story));
    story.Update();
    const SnapshotPointer before = workspace.Current();
    EXPECT_EQ(AnswerFor(before, "a"), "a: a.c:1 in a.c");
    EXPECT_EQ(workspace.Current(), before) << "nothing has changed";
    story.Write("b.c", "int b;\n");
    ASSERT_TRUE(workspace.Project().Update({}, story.cancel));
    EXPECT_EQ(AnswerFor(workspace.Current(), "b"), "b: b.c:1 in b.c");
}

TEST(Workspace, PrefersOpenTextsToFiles)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Update();
    Workspace workspace(OptionsOf(story));
    ASSERT_TRUE(workspace.SetOpenText(story.Path("a.c"), "\nint changed;\n"));
    ASSERT_TRUE(workspace.SetOpenText(story.Path("new.c"), "int fresh;\n"));
    EXPECT_EQ(AnswerFor(workspace.Current(), "a"), "a: in");
    EXPECT_EQ(AnswerFor(workspace.Current(), "changed"), "changed: a.c:2 in a.c");
    EXPECT_EQ(AnswerFor(workspace.Current(), "fresh"), "fresh: new.c:1 in new.c");
    EXPECT_EQ(workspace.Read("a.c"), "\nint changed;\n");
    workspace.CloseText(story.Path("a.c"));
    workspace.CloseText(story.Path("new.c"));
    workspace.CloseText(story.Path("never opened.c"));
    EXPECT_EQ(AnswerFor(workspace.Current(), "a"), "a: a.c:1 in a.c");
    EXPECT_EQ(AnswerFor(workspace.Current(), "fresh"), "fresh: in");
    EXPECT_EQ(workspace.Read("a.c"), "int a;\n");
}

TEST(Workspace, KeepsATextThatCannotBeParsed)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    story.Update();
    WorkspaceOptions options = OptionsOf(story);
    options.tagging.ctags.program = "/bin/false";
    Workspace workspace(options);
    EXPECT_FALSE(workspace.SetOpenText(story.Path("a.c"), "int changed;\n"));
    EXPECT_EQ(workspace.Read("a.c"), "int changed;\n");
    EXPECT_EQ(workspace.Current()->ByName("a", {}).found.size(), 0u);
}

TEST(Workspace, ConvertsPaths)
{
    IndexStory story;
    story.Write("x/a.c", "int a;\n");
    fs::create_symlink("x/a.c", story.Path("link.c"));
    fs::create_directory_symlink(story.top, story.tree / "other");
    story.Update();
    const Workspace workspace(OptionsOf(story));
    EXPECT_EQ(workspace.PathInIndex(story.Path("x/a.c")), "x/a.c");
    EXPECT_EQ(workspace.PathInIndex(story.Path("new.c")), "new.c");
    EXPECT_EQ(workspace.PathInIndex(story.Path("link.c")), "x/a.c") << "the file is indexed by its real path";
    EXPECT_EQ(workspace.PathInIndex(story.tree / "other/x/a.c"), "x/a.c");
    EXPECT_EQ(workspace.PathInIndex("/usr/include/stdio.h"), "/usr/include/stdio.h");
    EXPECT_EQ(workspace.PathInIndex(story.top + "-sibling/a.c"), story.top + "-sibling/a.c");
    File file;
    file.path = "x/a.c";
    EXPECT_EQ(workspace.AbsolutePath(file), story.Path("x/a.c"));
    file.path = "/usr/include/stdio.h";
    EXPECT_EQ(workspace.AbsolutePath(file), "/usr/include/stdio.h");
}

TEST(Workspace, ReadsFilesOfTheProjectAndOthers)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    const Workspace workspace(OptionsOf(story));
    EXPECT_EQ(workspace.Read("a.c"), "int a;\n");
    EXPECT_EQ(workspace.Read(story.Path("a.c")), "int a;\n");
    EXPECT_EQ(workspace.Read("none.c"), std::nullopt);
    EXPECT_EQ(workspace.Read("/dev/zero"), std::nullopt);
}

// For ThreadSanitizer.
TEST(Workspace, IsUsedByManyThreads)
{
    IndexStory story;
    story.Write("a.c", "int a;\n");
    Workspace workspace(OptionsOf(story));
    std::vector<std::thread> threads;
    threads.emplace_back([&] {
        for (int i = 0; i < 5; ++i) {
            story.Write("b.c", "int b" + std::to_string(i) + ";\n");
            EXPECT_TRUE(workspace.Project().Update({}, story.cancel));
        }
    });
    threads.emplace_back([&] {
        for (int i = 0; i < 20; ++i)
            EXPECT_TRUE(workspace.SetOpenText(story.Path("a.c"), "int open" + std::to_string(i) + ";\n"));
    });
    for (int reader = 0; reader < 2; ++reader)
        threads.emplace_back([&] {
            for (int i = 0; i < 50; ++i) {
                workspace.Current()->ByPrefix("o", {});
                workspace.Read(workspace.PathInIndex(story.Path("a.c")));
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(AnswerFor(workspace.Current(), "open19"), "open19: a.c:1 in a.c");
    EXPECT_EQ(AnswerFor(workspace.Current(), "b4"), "b4: b.c:1 in b.c");
}

} // namespace symbols
