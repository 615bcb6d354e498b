#include "wren/core/UnaskedRebuilds.h"

#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace wren {
namespace {

namespace fs = std::filesystem;

class UnaskedRebuildsTest : public testing::Test {
protected:
    UnaskedRebuildsTest() : file(tree.Write("tags", "old\told.h\t1;\"\tv\n")), request{file, tree.Write("new.h", "x")}
    {
    }

    std::string Why(const UnaskedRebuilds& rebuilds) const { return rebuilds.WhyNot(request, file).value_or("may be"); }

    const TempDirectory tree;
    const std::string file;
    vetch::ShellRequest request;
    UnaskedRebuilds rebuilds{::geteuid()};
};

TEST_F(UnaskedRebuildsTest, AreAllowedForTheUsersOwnTags)
{
    EXPECT_EQ(Why(rebuilds), "may be");
}

// Files made here belong to the user who runs the tests. For another user number they are a stranger's, unless they are
// root's.
TEST_F(UnaskedRebuildsTest, AreRefusedInAnotherUsersDirectory)
{
    const UnaskedRebuilds stranger(::geteuid() + 1);
    const std::string why = Why(stranger);
    if (::geteuid() == 0)
        EXPECT_EQ(why, "may be") << "what is root's is nobody's bait";
    else
        EXPECT_NE(why.find(tree.Path() + " belongs to "), std::string::npos) << why;
}

TEST_F(UnaskedRebuildsTest, CheckTheOwnersOfTheDirectoryAndTheFile)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can give files away";
    ASSERT_EQ(::chown(file.c_str(), 12345, 12345), 0);
    EXPECT_EQ(Why(rebuilds), file + " belongs to user 12345");
    ASSERT_EQ(::chown(file.c_str(), 0, 0), 0);
    ASSERT_EQ(::chown(tree.Path().c_str(), 12345, 12345), 0);
    EXPECT_EQ(Why(rebuilds), tree.Path() + " belongs to user 12345");
    EXPECT_EQ(Why(UnaskedRebuilds(12345)), "may be");
}

TEST_F(UnaskedRebuildsTest, DoNotFollowALinkToTheTagsOfAnotherProject)
{
    fs::create_directory(tree / "project");
    fs::create_symlink("../tags", tree / "project/tags");
    request.outdated = tree / "project/tags";
    EXPECT_EQ(Why(rebuilds), tree / "project/tags is a link to it");
}

TEST_F(UnaskedRebuildsTest, AreRefusedASecondTimeForTheSameTagsAndSource)
{
    rebuilds.Ended(request, file);
    EXPECT_EQ(Why(rebuilds), "rebuilding them once has not helped");
    request.newer = tree.Write("other.h", "y");
    EXPECT_EQ(Why(rebuilds), "may be") << "another source";
    rebuilds.Ended(request, file);
    tree.Write("other.h", "longer");
    EXPECT_EQ(Why(rebuilds), "may be") << "the source has changed";
    rebuilds.Ended(request, file);
    tree.Write("tags", "");
    EXPECT_EQ(Why(rebuilds), "may be") << "the tags have changed";
}

} // namespace
} // namespace wren
