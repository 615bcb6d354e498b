#include "symbols/update/CacheLocation.h"

#include "tests/support/Environment.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace symbols {

namespace {

mode_t ModeOf(const std::string& path)
{
    struct stat status = {};
    EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

} // namespace

TEST(DirectoryOfIndex, DiffersForRootsWithTheSameName)
{
    const std::string one = DirectoryOfIndex("/cache", "/a/project", false);
    EXPECT_TRUE(one.starts_with("/cache/project-")) << one;
    EXPECT_NE(one, DirectoryOfIndex("/cache", "/b/project", false));
    EXPECT_EQ(one, DirectoryOfIndex("/cache", "/a/project", false));
}

TEST(DirectoryOfIndex, IsOneShortNameForAnyRoot)
{
    const std::string root = "/a/" + std::string(300, 'x') + "\n\xff/..  ;";
    const std::string directory = DirectoryOfIndex("/cache", root, false);
    EXPECT_EQ(directory.rfind('/'), 6u);
    EXPECT_LT(directory.size(), 80u);
    EXPECT_TRUE(DirectoryOfIndex("/cache", "", false).starts_with("/cache/root-"));
}

TEST(UsersIndexes, AreInTheCacheOfTheUser)
{
    SetVariable("XDG_CACHE_HOME", "/caches");
    EXPECT_EQ(UsersIndexes(), "/caches/declaration/index");
    SetVariable("XDG_CACHE_HOME", nullptr);
    SetVariable("HOME", "/home/u");
    EXPECT_EQ(UsersIndexes(), "/home/u/.cache/declaration/index");
    SetVariable("HOME", nullptr);
    EXPECT_EQ(UsersIndexes(), "");
}

TEST(MakePrivateDirectory, MakesAllDirectoriesForTheUserOnly)
{
    const TempDirectory directory;
    ::umask(0);
    ASSERT_TRUE(MakePrivateDirectory(directory / "a/b/c"));
    for (const char* leaf : {"a", "a/b", "a/b/c"})
        EXPECT_EQ(ModeOf(directory / leaf), 0700u) << leaf;
}

TEST(MakePrivateDirectory, ClosesADirectoryThatOthersCanRead)
{
    const TempDirectory directory;
    ASSERT_EQ(::mkdir((directory / "a").c_str(), 0755), 0);
    ASSERT_TRUE(MakePrivateDirectory(directory / "a"));
    EXPECT_EQ(ModeOf(directory / "a"), 0700u);
}

TEST(MakePrivateDirectory, RefusesWhatIsNotItsOwnDirectory)
{
    const TempDirectory directory;
    directory.Write("file", "");
    EXPECT_FALSE(MakePrivateDirectory(directory / "file"));
    EXPECT_FALSE(MakePrivateDirectory(directory / "file/inner"));
    std::filesystem::create_directory_symlink(directory.Path(), directory / "link");
    EXPECT_FALSE(MakePrivateDirectory(directory / "link"));
}

} // namespace symbols
