// The leftovers of killed runs, and what a hostile tree puts in their place.

#include "base/WorkingDirectory.h"

#include "tagsfile/NewFile.h"
#include "tests/support/DoAndBeKilled.h"
#include "tests/support/FileContent.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <iterator>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tagsfile {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

void Replace(const std::string& target, const std::string& text)
{
    NewFile file(target);
    ASSERT_EQ(file.Error(), "");
    EXPECT_TRUE(file.Write(text));
    EXPECT_TRUE(file.Commit()) << file.Error();
}

void KillWriter(const std::string& target)
{
    DoAndBeKilled([&](const auto& beKilled) {
        NewFile file(target);
        file.Write(std::string(1000000, 'x'));
        beKilled();
    });
}

TEST(WorkingDirectory, TheNextRunForAnyTagsFileRemovesThatOfAKilledRun)
{
    const TempDirectory directory;
    const std::string target = directory.Write("tags", "old");
    directory.Write(".tags.cplustags-is no directory", "the user's");
    for (const char* killed : {"tags", "tags.tmp", "other", ".hidden", "with.cplustags-inside"}) {
        KillWriter(directory / killed);
        EXPECT_EQ(Content(target), "old");
        EXPECT_EQ(NamesIn(directory.Path()).size(), 3u) << killed;
        Replace(directory / "tags", "old");
        EXPECT_EQ(NamesIn(directory.Path()), (Texts{".tags.cplustags-is no directory", "tags"})) << killed;
    }
}

TEST(WorkingDirectory, ARunningProcessKeepsItsOwn)
{
    const TempDirectory directory;
    NewFile other(directory / "tags.tmp");
    EXPECT_TRUE(other.Write("other"));
    Replace(directory / "tags", "new");
    EXPECT_TRUE(other.Commit()) << other.Error();
    EXPECT_EQ(Content(directory / "tags.tmp"), "other");
}

// Removes everything that a killed process may leave, and nothing that only looks like it.
TEST(WorkingDirectory, OnlyLeftoversAreRemoved)
{
    const TempDirectory directory;
    directory.Write(".tags.cplustags-LocK01/lock", "");
    directory.Write(".tags.cplustags-LocK02/lock", "");
    directory.Write(".tags.cplustags-LocK02/new", "text");
    directory.Write(".tags.cplustags-LocK02/temporary/file", "text");
    directory.Write(".tags.cplustags-x.cplustags-LocK03/lock", "another target's");
    fs::create_directories(directory / ".tags.cplustags-emPty0");
    directory.Write(".tags.cplustags-backup/without a lock", "the user's");
    directory.Write(".tags.cplustags-backups/lock", "the user's");
    directory.Write(".tags.cplustags-a file/lock", "the user's");
    directory.Write("tags.cplustags-LocK04/lock", "the user's");
    directory.Write(".cplustags-LocK05/lock", "the user's");
    directory.Write("real/lock", "the user's");
    fs::create_symlink("real", directory / ".tags.cplustags-linked");
    Replace(directory / "tags", "new");
    EXPECT_EQ(NamesIn(directory.Path()),
              (Texts{".cplustags-LocK05", ".tags.cplustags-a file", ".tags.cplustags-backup", ".tags.cplustags-backups",
                     ".tags.cplustags-linked", "real", "tags", "tags.cplustags-LocK04"}));
    EXPECT_EQ(NamesIn(directory / "real"), Texts{"lock"});
    EXPECT_EQ(NamesIn(directory / ".tags.cplustags-backup"), Texts{"without a lock"});
}

// A tree with false working directories, beside the user's files.
class HostileLeftovers : public testing::Test {
protected:
    HostileLeftovers()
    {
        directory.Write("home/file", "the user's");
        directory.Write("home/below/file", "the user's");
        directory.Write("tree/tags", "old");
    }

    // The user's files and directories are unchanged, and there are no others.
    void ExpectHomeAsItWas() const
    {
        EXPECT_EQ(NamesIn(directory / "home"), (Texts{"below", "file"}));
        EXPECT_EQ(NamesIn(directory / "home/below"), Texts{"file"});
        EXPECT_EQ(Content(directory / "home/file"), "the user's");
        EXPECT_EQ(Content(directory / "home/below/file"), "the user's");
    }

    std::string InTree(const std::string& leaf) const { return directory / "tree/" + leaf; }

    const TempDirectory directory;
};

TEST_F(HostileLeftovers, LinksAreNotFollowed)
{
    const std::string home = directory / "home";
    fs::create_symlink(home, InTree(".tags.cplustags-linked"));
    directory.Write("tree/.tags.cplustags-LocK01/lock", "");
    fs::create_symlink(home, InTree(".tags.cplustags-LocK01/directory"));
    fs::create_symlink(home + "/file", InTree(".tags.cplustags-LocK01/new"));
    directory.Write("tree/.tags.cplustags-LocK01/below/file", "");
    fs::create_symlink(home, InTree(".tags.cplustags-LocK01/below/directory"));
    fs::create_directory(InTree(".tags.cplustags-LocK02"));
    fs::create_symlink(home + "/file", InTree(".tags.cplustags-LocK02/lock"));
    fs::create_directory(InTree(".tags.cplustags-LocK03"));
    fs::create_symlink(home + "/none", InTree(".tags.cplustags-LocK03/lock"));
    fs::create_directory(InTree(".tags.cplustags-LocK04"));
    fs::create_hard_link(home + "/file", InTree(".tags.cplustags-LocK04/lock"));
    fs::create_hard_link(home + "/below/file", InTree(".tags.cplustags-LocK04/new"));
    Replace(InTree("tags"), "new");
    ExpectHomeAsItWas();
    EXPECT_EQ(NamesIn(directory / "tree"),
              (Texts{".tags.cplustags-LocK02", ".tags.cplustags-LocK03", ".tags.cplustags-linked", "tags"}));
}

TEST_F(HostileLeftovers, PipesAreNotWaitedFor)
{
    fs::create_directory(InTree(".tags.cplustags-LocK01"));
    ASSERT_EQ(::mkfifo(InTree(".tags.cplustags-LocK01/lock").c_str(), 0600), 0);
    fs::create_directory(InTree(".tags.cplustags-LocK02"));
    fs::create_directory(InTree(".tags.cplustags-LocK02/lock"));
    directory.Write("tree/.tags.cplustags-LocK03/lock", "");
    ASSERT_EQ(::mkfifo(InTree(".tags.cplustags-LocK03/new").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(InTree(".tags.cplustags-LocK04").c_str(), 0600), 0);
    Replace(InTree("tags"), "new");
    ExpectHomeAsItWas();
    EXPECT_EQ(NamesIn(directory / "tree"),
              (Texts{".tags.cplustags-LocK01", ".tags.cplustags-LocK02", ".tags.cplustags-LocK04", "tags"}));
}

// Deeper than any path can reach.
TEST_F(HostileLeftovers, DirectoriesMayBeDeeperThanAnyPath)
{
    directory.Write("tree/.tags.cplustags-LocK01/lock", "");
    const std::string name(200, 'n');
    constexpr int kDepth = 40;
    int level = ::open(InTree(".tags.cplustags-LocK01").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int depth = 0; depth < kDepth; ++depth) {
        ASSERT_EQ(::mkdirat(level, name.c_str(), 0700), 0);
        const int next = ::openat(level, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ::close(level);
        level = next;
    }
    ASSERT_EQ(::symlinkat((directory / "home").c_str(), level, "link"), 0);
    ::close(level);
    Replace(InTree("tags"), "new");
    ExpectHomeAsItWas();
    EXPECT_EQ(NamesIn(directory / "tree"), (Texts{".tags.cplustags-LocK01", "tags"}));
    EXPECT_EQ(NamesIn(InTree(".tags.cplustags-LocK01")), (Texts{"lock", name})) << "no run of ours has left that";
    EXPECT_EQ(std::system(("rm -rf '" + InTree(".tags.cplustags-LocK01") + "'").c_str()), 0);
}

TEST_F(HostileLeftovers, ALockedDirectoryIsNotWaitedFor)
{
    const base::Descriptor locked(::open((directory / "tree").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(::flock(locked.Number(), LOCK_EX), 0);
    Replace(InTree("tags"), "new");
    EXPECT_EQ(Content(InTree("tags")), "new");
}

} // namespace
} // namespace tagsfile
