#include "symbols/Index.h"
#include "tests/support/Environment.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

namespace symbols {

namespace {

namespace fs = std::filesystem;

struct Sign {
    const char* why;
    const char* path; // a directory when it ends in "/"
    bool isRoot;
};

const Sign kSigns[] = {
    {"a tags file", "tags", true},
    {"but a directory of that name is part of many projects", "tags/", false},
    {"git", ".git/", true},
    {"a second work tree of git has a file", ".git", true},
    {"Mercurial", ".hg/", true},
    {"Jujutsu", ".jj/", true},
    {"the commands of a build", "compile_commands.json", true},
    {"our own sign", ".wren", true},
    {"as a directory", ".wren/", true},
    {"anything else", "Makefile", false},
};

std::string Nothing(const std::optional<std::string>& root)
{
    return root.value_or("nothing");
}

} // namespace

TEST(FindRoot, KnowsItsSigns)
{
    for (const Sign& sign : kSigns) {
        const TempDirectory tree;
        SetVariable("HOME", tree.Path().c_str());
        const std::string file = tree.Write("project/source/inner/a.c", "");
        const std::string path = tree / "project/" + sign.path;
        if (path.ends_with('/'))
            fs::create_directory(path);
        else
            tree.Write(std::string("project/") + sign.path, "");
        EXPECT_EQ(Nothing(FindRoot(file)), sign.isRoot ? tree / "project" : "nothing") << sign.why;
    }
}

TEST(FindRoot, TakesTheNearest)
{
    const TempDirectory tree;
    tree.Write("a/.git/HEAD", "");
    tree.Write("a/b/c/tags", "");
    EXPECT_EQ(FindRoot(tree / "a/b/c/d.c"), tree / "a/b/c");
    EXPECT_EQ(FindRoot(tree / "a/b/c/"), tree / "a/b/c");
    EXPECT_EQ(FindRoot(tree / "a/b"), tree / "a");
    EXPECT_EQ(FindRoot(tree / "a"), tree / "a");
    EXPECT_EQ(FindRoot(tree / "a/none/none.c"), tree / "a");
}

TEST(FindRoot, IsNeverTheHomeDirectoryOrAboveIt)
{
    const TempDirectory tree;
    tree.Write("users/.git/HEAD", "");
    tree.Write("users/u/.git/HEAD", "");
    tree.Write("users/u/x/a.c", "");
    fs::create_directory_symlink("users/u", tree / "home");
    SetVariable("HOME", (tree / "home").c_str()); // by another path
    EXPECT_EQ(Nothing(FindRoot(tree / "users/u/x/a.c")), "nothing");
    EXPECT_EQ(Nothing(FindRoot(tree / "users/u")), "nothing");
    EXPECT_EQ(FindRoot(tree / "users/v/a.c"), tree / "users");
    EXPECT_EQ(Nothing(FindRoot("/")), "nothing");
}

} // namespace symbols
