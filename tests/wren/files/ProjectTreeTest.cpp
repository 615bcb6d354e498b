#include "wren/files/ProjectTree.h"
#include "tests/support/TempDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using wren::ProjectTree;
using wren::TreeEntry;

namespace {

class Tree : public ::testing::Test {
protected:
    Tree()
    {
        home.Write("p/.git/HEAD", "ref: refs/heads/main\n");
        home.Write("p/.gitignore", "*.o\n/out/\n");
        home.Write("p/b.c", "");
        home.Write("p/B.h", "");
        home.Write("p/a.c", "");
        home.Write("p/a.o", "");
        home.Write("p/out/x.c", "");
        home.Write("p/src/deep/x.c", "");
        home.Write("p/src/.gitignore", "y.c\n");
        home.Write("p/src/y.c", "");
    }

    // Directories end with "/", links with "@".
    std::vector<std::string> List(const std::string& directory, bool all = false)
    {
        std::vector<std::string> names;
        const base::Result<std::vector<TreeEntry>> listed = tree.List(directory, all);
        EXPECT_TRUE(listed);
        for (const TreeEntry& each : *listed)
            names.push_back(each.name + (each.kind == TreeEntry::Kind::Directory ? "/"
                                         : each.kind == TreeEntry::Kind::Link    ? "@"
                                                                                 : ""));
        return names;
    }

    const TempDirectory home;
    ProjectTree tree{home / "p"};
    const base::CancelToken never;
};

} // namespace

TEST_F(Tree, ListsDirectoriesFirstAndLeavesOutWhatIsIgnored)
{
    EXPECT_THAT(List(""), ElementsAre("src/", ".gitignore", "a.c", "b.c", "B.h"));
    EXPECT_THAT(List("src"), ElementsAre("deep/", ".gitignore"));
    EXPECT_THAT(List("src/deep"), ElementsAre("x.c"));
}

TEST_F(Tree, ListsEverythingOnRequest)
{
    EXPECT_THAT(List("", true), ElementsAre(".git/", "out/", "src/", ".gitignore", "a.c", "a.o", "b.c", "B.h"));
    EXPECT_THAT(List("out", true), ElementsAre("x.c"));
    EXPECT_THAT(List("src", true), ElementsAre("deep/", ".gitignore", "y.c"));
}

TEST_F(Tree, NothingCountsBelowAnIgnoredDirectory)
{
    EXPECT_THAT(List("out"), IsEmpty());
}

TEST_F(Tree, SeesChangedRulesWhenItHasForgottenTheOldOnes)
{
    List("src");
    home.Write("p/src/.gitignore", "");
    tree.Forget();
    EXPECT_THAT(List("src"), ElementsAre("deep/", ".gitignore", "y.c"));
}

TEST_F(Tree, DoesNotFollowLinksToDirectoriesOrOutOfTheProject)
{
    home.Write("secret", "");
    fs::create_symlink(home / "secret", home / "p/src/deep/out.c");
    fs::create_symlink("../../a.c", home / "p/src/deep/in.c");
    fs::create_directory_symlink("..", home / "p/src/deep/up");
    fs::create_symlink("nowhere", home / "p/src/deep/gone.c");
    EXPECT_THAT(List("src/deep"), ElementsAre("gone.c@", "in.c", "out.c@", "up@", "x.c"));
    EXPECT_FALSE(tree.List("src/deep/up", true)) << "a link in place of a directory";
}

TEST_F(Tree, LeavesOutWhatReadingWouldWaitFor)
{
    ASSERT_EQ(::mkfifo((home / "p/src/deep/pipe.c").c_str(), 0600), 0);
    EXPECT_THAT(List("src/deep"), ElementsAre("x.c"));
}

TEST_F(Tree, ADirectoryThatHasGoneIsAnError)
{
    const auto listed = tree.List("nowhere", true);
    ASSERT_FALSE(listed);
    EXPECT_THAT(listed.Failure().Message(), HasSubstr("nowhere"));
}

TEST_F(Tree, FilesAreFoundByTheirNamesOrPaths)
{
    const auto files = wren::FilesBelow(home / "p", false, never);
    ASSERT_TRUE(files);
    EXPECT_THAT(*files, ElementsAre(".gitignore", "B.h", "a.c", "b.c", "src/.gitignore", "src/deep/x.c"));
    struct Case {
        const char* letters;
        std::vector<std::string> found;
    };
    const Case cases[] = {
        {"b.", {"B.h", "b.c"}},      {"X.C", {"src/deep/x.c"}}, {"deep", {}},
        {"deep/", {"src/deep/x.c"}}, {"c/d", {"src/deep/x.c"}}, {"nothing", {}},
    };
    for (const Case& each : cases)
        EXPECT_EQ(wren::FilesWith(each.letters, *files, 10, never), each.found) << each.letters;
    EXPECT_THAT(wren::FilesWith(".", *files, 2, never), SizeIs(2));
}

TEST_F(Tree, ACancelledSearchFindsNothing)
{
    base::CancelToken cancel;
    cancel.Cancel();
    EXPECT_FALSE(wren::FilesBelow(home / "p", false, cancel));
    EXPECT_FALSE(wren::FilesBelow(home / "p", true, cancel));
    EXPECT_THAT(wren::FilesWith("a", {"a"}, 10, cancel), IsEmpty());
}
