#include "tests/support/OrdinaryRights.h"
#include "tests/support/RunProgram.h"
#include "tests/support/TempDirectory.h"
#include "tests/symbols/update/PathsFound.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace symbols {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

Walked WalkOf(const std::string& root)
{
    const base::CancelToken cancel;
    base::Result<Walked> walked = Walk({root, {root}}, cancel);
    EXPECT_TRUE(walked) << walked.Failure().Message();
    return walked ? std::move(*walked) : Walked();
}

// A git repository, as far as a walk looks.
void MakeWorkTree(const TempDirectory& tree, const std::string& top)
{
    tree.Write(top + ".git/HEAD", "ref: refs/heads/main\n");
}

} // namespace

TEST(Walk, FindsSourcesOfTheFamilyInByteOrder)
{
    const TempDirectory tree;
    for (const char* name : {"b/x.cpp", "a.h", "b.c", "read.me", "b-x.mm", "Makefile", "b/y.tpp", ".c"})
        tree.Write(name, "");
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre("a.h", "b-x.mm", "b.c", "b/x.cpp", "b/y.tpp"));
}

TEST(Walk, KeepsSizeTimeAndInode)
{
    const TempDirectory tree;
    const std::string path = tree.Write("a.c", "int a;");
    struct stat status;
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    const Walked walked = WalkOf(tree.Path());
    ASSERT_EQ(walked.files.size(), 1u);
    EXPECT_EQ(walked.files[0].stamp, tagging::FileStamp::Of(status));
}

TEST(Walk, LeavesOutBuildsAndOtherPeoplesPackages)
{
    const TempDirectory tree;
    for (const char* name :
         {"a.c", "node_modules/b.c", ".svn/b.c", ".hg/b.c", ".jj/b.c", "build/CMakeCache.txt", "build/b.c",
          "build/d/b.c", "out/build.ninja", "out/b.c", "o2/meson-info/x", "o2/b.c", "builds/c.c"})
        tree.Write(name, "");
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre("a.c", "builds/c.c"));
}

TEST(Walk, TakesABuildThatIsItsRoot)
{
    const TempDirectory tree;
    tree.Write("CMakeCache.txt", "");
    tree.Write("a.c", "");
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre("a.c"));
}

TEST(Walk, ReadsIgnoreFilesOfGitOnlyInWorkTrees)
{
    const TempDirectory tree;
    tree.Write(".gitignore", "b.c\n");
    tree.Write("a.c", "");
    tree.Write("b.c", "");
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre("a.c", "b.c"));
    MakeWorkTree(tree, "");
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre("a.c"));
}

TEST(Walk, ReadsTheIgnoreFilesAboveItsRoot)
{
    const TempDirectory tree;
    MakeWorkTree(tree, "");
    tree.Write(".gitignore", "b.c\n/x/y/c.c\n");
    for (const char* name : {"x/y/a.c", "x/y/b.c", "x/y/c.c"})
        tree.Write(name, "");
    EXPECT_THAT(PathsIn(tree / "x/y"), ElementsAre("a.c"));
}

// A home directory under git ignores nearly all that is in it.
TEST(Walk, TakesARootThatTheWorkTreeAroundItIgnores)
{
    const TempDirectory tree;
    MakeWorkTree(tree, "");
    tree.Write(".gitignore", "*\n");
    tree.Write("project/a.c", "");
    EXPECT_THAT(PathsIn(tree / "project"), ElementsAre("a.c"));
    EXPECT_THAT(PathsIn(tree.Path()), IsEmpty());
}

TEST(Walk, LetsAnInnerWorkTreeHaveItsOwnRules)
{
    const TempDirectory tree;
    MakeWorkTree(tree, "");
    tree.Write(".gitignore", "b.c\n");
    MakeWorkTree(tree, "inner/");
    tree.Write("inner/.gitignore", "c.c\n");
    for (const char* name : {"a.c", "b.c", "c.c", "inner/a.c", "inner/b.c", "inner/c.c"})
        tree.Write(name, "");
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre("a.c", "c.c", "inner/a.c", "inner/b.c"));
}

TEST(Walk, ReadsItsOwnIgnoreFilesEverywhere)
{
    const TempDirectory tree;
    tree.Write(".wrenignore", "generated/\n*.m\n");
    tree.Write("x/.wrenignore", "!keep.m\n/b.c\n");
    for (const char* name : {"a.c", "a.m", "generated/a.c", "x/b.c", "x/keep.m", "x/y/b.c"})
        tree.Write(name, "");
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre("a.c", "x/keep.m", "x/y/b.c"));
}

TEST(Walk, DoesNotFollowLinksToIgnoreFiles)
{
    const TempDirectory tree;
    MakeWorkTree(tree, "");
    tree.Write("rules", "a.c\n");
    tree.Write("a.c", "");
    fs::create_symlink("rules", tree / ".gitignore");
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre("a.c"));
}

TEST(Walk, DoesNotFollowLinksToDirectories)
{
    const TempDirectory tree;
    tree.Write("real/a.c", "");
    fs::create_directory_symlink("real", tree / "link");
    fs::create_directory_symlink("..", tree / "real/loop.c");
    fs::create_directory_symlink(tree.Path(), tree / "real/self");
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre("real/a.c"));
}

TEST(Walk, TakesTheFirstOfSeveralPathsThatIsNotALink)
{
    const TempDirectory tree;
    tree.Write("m.c", "");
    fs::create_hard_link(tree / "m.c", tree / "k.c");
    fs::create_symlink("m.c", tree / "a.c");
    fs::create_symlink("../outside.c", tree / "z.c");
    fs::create_symlink("no such file", tree / "y.c");
    tree.Write("other.c", "");
    const Walked walked = WalkOf(tree.Path());
    EXPECT_THAT(PathsOf(walked), ElementsAre("k.c", "other.c"));
    EXPECT_THAT(walked.twins, ElementsAre("a.c", "k.c", "m.c"));
}

TEST(Walk, TakesTheFirstOfSeveralLinks)
{
    const TempDirectory tree;
    const TempDirectory elsewhere;
    elsewhere.Write("a.c", "");
    fs::create_symlink(elsewhere / "a.c", tree / "y.c");
    fs::create_symlink(elsewhere / "a.c", tree / "x.c");
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre("x.c"));
}

TEST(Walk, TakesPlainFilesOnly)
{
    const TempDirectory tree;
    tree.Write("a.c", "");
    fs::create_directory(tree / "d.c");
    ASSERT_EQ(::mkfifo((tree / "fifo.c").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", tree / "device.c");
    fs::create_symlink("fifo.c", tree / "link.c");
    const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address = {AF_UNIX, {}};
    (tree / "socket.c").copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(::bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre("a.c"));
    ::close(server);
}

TEST(Walk, TakesNamesOfAnyBytes)
{
    const TempDirectory tree;
    tree.Write("new\nline.c", "");
    tree.Write("\xff\xfe.c", "");
    tree.Write(" .c", "");
    EXPECT_THAT(PathsIn(tree.Path()), ElementsAre(" .c", "new\nline.c", "\xff\xfe.c"));
}

TEST(Walk, ReportsDirectoriesThatCannotBeRead)
{
    const TempDirectory tree;
    tree.Write("closed/a.c", "");
    tree.Write("b.c", "");
    ASSERT_EQ(::chmod((tree / "closed").c_str(), 0), 0);
    const base::CancelToken cancel;
    base::Result<Walked> walked = base::Error{"not walked"};
    {
        const OrdinaryRights rights;
        walked = Walk({tree.Path(), {tree.Path()}, false, 1}, cancel);
    }
    ::chmod((tree / "closed").c_str(), 0700);
    EXPECT_THAT(PathsOf(walked), ElementsAre("b.c"));
    EXPECT_THAT(walked->messages, ElementsAre("cannot read " + tree / "closed" + ": Permission denied"));
}

TEST(Walk, FailsWithoutItsRoot)
{
    const TempDirectory tree;
    EXPECT_THAT(PathsIn(tree / "none"), ElementsAre("cannot read " + tree / "none" + ": No such file or directory"));
    tree.Write("file", "");
    EXPECT_THAT(PathsIn(tree / "file"), ElementsAre("cannot read " + tree / "file" + ": Not a directory"));
}

TEST(Walk, TakesARootThatIsALink)
{
    const TempDirectory tree;
    tree.Write("real/a.c", "");
    fs::create_directory_symlink("real", tree / "link");
    EXPECT_THAT(PathsIn(tree / "link"), ElementsAre("a.c"));
}

TEST(Walk, EndsInTreesDeeperThanAnyPath)
{
    const TempDirectory tree;
    tree.Write("a.c", "");
    const std::string name(200, 'd');
    int directory = ::open(tree.Path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int level = 0; level < 30; ++level) {
        ASSERT_EQ(::mkdirat(directory, name.c_str(), 0700), 0);
        const int inner = ::openat(directory, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ::close(directory);
        directory = inner;
    }
    ::close(directory);
    const Walked walked = WalkOf(tree.Path());
    EXPECT_THAT(PathsOf(walked), ElementsAre("a.c"));
    ASSERT_EQ(walked.messages.size(), 1u);
    EXPECT_THAT(walked.messages[0], testing::HasSubstr("File name too long"));
    RunProgram({"/bin/rm", "-rf", tree / name}, "/"); // std::filesystem cannot name it
}

TEST(Walk, StopsWhenItIsCancelled)
{
    const TempDirectory tree;
    tree.Write("a.c", "");
    base::CancelToken cancel;
    cancel.Cancel();
    EXPECT_THAT(PathsOf(Walk({tree.Path(), {tree.Path()}}, cancel)), ElementsAre("cancelled"));
}

TEST(Walk, OfTheSystemTakesNamesWithoutSuffixAndKnowsNoIgnoreFiles)
{
    const TempDirectory tree;
    MakeWorkTree(tree, "");
    for (const char* name : {"include/vector", "include/a.h", "include/README.txt", "include/build.ninja", "other/b.h"})
        tree.Write(name, "");
    tree.Write(".gitignore", "*\n");
    const base::CancelToken cancel;
    const base::Result<Walked> walked = Walk({tree.Path(), {tree / "include"}, true}, cancel);
    EXPECT_THAT(PathsOf(walked), ElementsAre("include/a.h", "include/vector"));
    EXPECT_FALSE(walked->files[0].needsLook);
    EXPECT_TRUE(walked->files[1].needsLook);
}

TEST(Walk, EntersADirectoryBeforeItReadsIt)
{
    const TempDirectory tree;
    tree.Write("a/b.c", "");
    const base::CancelToken cancel;
    WalkOptions options = {tree.Path(), {tree.Path()}};
    std::vector<std::string> entered;
    options.threads = 1;
    options.enters = [&](const std::string& directory) {
        entered.push_back(directory);
        tree.Write("a/late.c", ""); // still found
    };
    EXPECT_THAT(PathsOf(Walk(options, cancel)), ElementsAre("a/b.c", "a/late.c"));
    EXPECT_THAT(entered, ElementsAre(tree.Path(), tree / "a"));
}

// One by one, files are judged as by a walk.
TEST(FindOne, AgreesWithWalks)
{
    const TempDirectory tree;
    MakeWorkTree(tree, "git/");
    tree.Write("git/.gitignore", "b.c\nhidden/\n");
    tree.Write("git/x/.gitignore", "!b.c\n");
    tree.Write(".wrenignore", "w.c\n");
    tree.Write("build/CMakeCache.txt", "");
    for (const char* directory : {"", "git/", "git/x/", "git/hidden/", "build/", "node_modules/", "git/node_modules/"})
        for (const char* leaf : {"a.c", "b.c", "w.c", "text"})
            tree.Write(std::string(directory) + leaf, "");
    fs::create_directory_symlink("git", tree / "link");
    std::vector<std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(tree.Path()))
        if (const auto file = FindOne({tree.Path(), {tree.Path()}}, entry.path()))
            found.push_back(file->path);
    std::ranges::sort(found);
    EXPECT_EQ(found, PathsIn(tree.Path()));
    EXPECT_THAT(found, ElementsAre("a.c", "b.c", "git/a.c", "git/node_modules/a.c", "git/x/a.c", "git/x/b.c"));
    EXPECT_FALSE(FindOne({tree.Path(), {tree.Path()}}, tree / "link/a.c"));
    EXPECT_FALSE(FindOne({tree.Path(), {tree.Path()}}, tree / "none.c"));
    EXPECT_FALSE(FindOne({tree.Path(), {tree.Path()}}, "/usr/include/stdio.h"));
}

} // namespace symbols
