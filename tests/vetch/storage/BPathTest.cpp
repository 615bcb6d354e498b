#include "vetch/storage/BPath.h"

#include "vetch/storage/BEntry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

TEST(BPath, NormalisesPaths)
{
    const struct {
        const char* why;
        const char* path;
        const char* normalised;
    } kCases[] = {
        {"nothing to do", "/a/b", "/a/b"},
        {"the root", "/", "/"},
        {"slashes beside each other", "//a///b", "/a/b"},
        {"a home directory with its slash, and one more", "/home/u//src", "/home/u/src"},
        {"a slash at the end", "/a/b/", "/a/b"},
        {"the same directory", "/./a/./b/.", "/a/b"},
        {"the directory above", "/a/../b/c/..", "/b"},
        {"above the root is the root", "/../../a", "/a"},
        {"nothing left", "/a/..", "/"},
        {"dots in names stay", "/a/..b/.c/...", "/a/..b/.c/..."},
        {"blanks and line breaks stay", "/a b/\n", "/a b/\n"},
        {"no path", "", ""},
    };
    for (const auto& c : kCases)
        EXPECT_STREQ(BPath(c.path).Path(), c.normalised) << c.why;
}

TEST(BPath, TakesARelativePathFromTheProcessDirectory)
{
    const std::string here = std::filesystem::current_path().string();
    EXPECT_EQ(BPath("a/b").Path(), here + "/a/b");
    EXPECT_EQ(BPath(".").Path(), here);
}

TEST(BPath, IsUnsetWithoutAnEntry)
{
    const BEntry unset;
    EXPECT_STREQ(BPath().Path(), "");
    EXPECT_STREQ(BPath(&unset).Path(), "");
    EXPECT_STREQ(BPath(static_cast<const BEntry*>(nullptr)).Path(), "");
    EXPECT_STREQ(BPath(static_cast<const char*>(nullptr)).Path(), "");
}

TEST(BPath, IsThePathOfAnEntry)
{
    const BEntry missing("/no/such/../entry");
    EXPECT_STREQ(BPath(&missing).Path(), "/no/entry");
}

TEST(BPath, CopiesAreIndependent)
{
    BPath path("/a");
    const BPath copy = path;
    path = BPath("/b");
    EXPECT_STREQ(copy.Path(), "/a");
    EXPECT_STREQ(path.Path(), "/b");
}
