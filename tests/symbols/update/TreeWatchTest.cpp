#include "symbols/update/TreeWatch.h"

#include "tests/support/TempDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace symbols {

namespace {

using testing::ElementsAre;

namespace fs = std::filesystem;

// A directory with a watch on it and on the directory "in" in it. Events are there as soon as the change is made.
class Watching {
public:
    explicit Watching(unsigned most = ~0u) : watch({{tree.Path()}, false, most})
    {
        fs::create_directory(tree / "in");
        Walk();
    }
    void Walk()
    {
        watch.BeginWalk();
        watch.Enter(tree.Path());
        if (fs::exists(tree / "in"))
            watch.Enter(tree / "in");
        watch.EndWalk();
    }

    const TempDirectory tree;
    TreeWatch watch;
};

} // namespace

TEST(TreeWatch, SeesSavesInPlace)
{
    Watching w;
    w.tree.Write("in/a.c", "int a;");
    const TreeWatch::Events events = w.watch.Read();
    EXPECT_THAT(events.files, ElementsAre(w.tree / "in/a.c"));
    EXPECT_FALSE(events.needsWalk);
}

TEST(TreeWatch, SeesSavesThatReplaceTheFile)
{
    Watching w;
    w.tree.Write("in/a.c", "");
    const std::string other = w.tree.Write("in/.a.c.swp", "int a;");
    w.watch.Read();
    fs::rename(other, w.tree / "in/a.c");
    EXPECT_THAT(w.watch.Read().files, ElementsAre(w.tree / "in/a.c"));
}

TEST(TreeWatch, SeesFilesThatGoAndChangedRights)
{
    Watching w;
    w.tree.Write("in/a.c", "");
    w.tree.Write("b.h", "");
    w.watch.Read();
    fs::remove(w.tree / "in/a.c");
    fs::permissions(w.tree / "b.h", fs::perms::none);
    EXPECT_THAT(w.watch.Read().files, ElementsAre(w.tree / "b.h", w.tree / "in/a.c"));
}

TEST(TreeWatch, DoesNotCareForOtherFiles)
{
    Watching w;
    w.tree.Write("in/a.o", "");
    w.tree.Write("in/notes", "");
    EXPECT_TRUE(w.watch.Read().IsEmpty());
}

TEST(TreeWatch, WantsAWalkForDirectoriesAndIgnoreFiles)
{
    Watching w;
    const std::vector<std::function<void()>> changes = {
        [&] { fs::create_directory(w.tree / "new"); },
        [&] { fs::rename(w.tree / "new", w.tree / "other"); },
        [&] { fs::remove(w.tree / "other"); },
        [&] { w.tree.Write("in/.gitignore", "x"); },
        [&] { w.tree.Write("in/.wrenignore", "x"); },
        [&] { w.tree.Write("CMakeCache.txt", ""); },
        [&] { fs::permissions(w.tree / "in", fs::perms::owner_all); },
    };
    for (size_t i = 0; i < changes.size(); ++i) {
        changes[i]();
        EXPECT_TRUE(w.watch.Read().needsWalk) << i;
    }
}

TEST(TreeWatch, WantsAWalkWhenItsStartGoes)
{
    Watching w;
    fs::rename(w.tree.Path(), w.tree.Path() + "-moved");
    EXPECT_TRUE(w.watch.Read().needsWalk);
    fs::remove_all(w.tree.Path() + "-moved");
    EXPECT_TRUE(w.watch.Read().needsWalk);
}

TEST(TreeWatch, KnowsADirectoryByItsNewPathAfterTheNextWalk)
{
    Watching w;
    fs::rename(w.tree / "in", w.tree / "moved");
    w.watch.Read();
    w.watch.BeginWalk();
    w.watch.Enter(w.tree.Path());
    w.watch.Enter(w.tree / "moved");
    w.watch.EndWalk();
    w.tree.Write("moved/a.c", "");
    EXPECT_THAT(w.watch.Read().files, ElementsAre(w.tree / "moved/a.c"));
}

TEST(TreeWatch, ForgetsDirectoriesThatAWalkDoesNotEnter)
{
    Watching w;
    w.watch.BeginWalk();
    w.watch.Enter(w.tree.Path());
    w.watch.EndWalk();
    w.watch.Read();
    w.tree.Write("in/a.c", "");
    EXPECT_TRUE(w.watch.Read().IsEmpty());
}

TEST(TreeWatch, SeesTheBranchAndTheIndexOfGit)
{
    Watching w;
    w.tree.Write("git/HEAD", "");
    w.watch.BeginWalk();
    w.watch.EnterGitDirectory(w.tree / "git");
    w.watch.EndWalk();
    w.watch.Read();
    w.tree.Write("git/config.lock", "");
    EXPECT_TRUE(w.watch.Read().IsEmpty());
    w.tree.Write("git/HEAD", "ref");
    EXPECT_TRUE(w.watch.Read().needsWalk);
}

TEST(TreeWatch, SaysWhenWatchesRunOut)
{
    Watching w(1);
    EXPECT_FALSE(w.watch.IsComplete());
    fs::remove(w.tree / "in");
    w.watch.Read();
    w.Walk();
    EXPECT_TRUE(w.watch.IsComplete());
}

} // namespace symbols
