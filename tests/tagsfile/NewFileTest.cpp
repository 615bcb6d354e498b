#include "tagsfile/NewFile.h"

#include "tests/support/FileContent.h"
#include "tests/support/OrdinaryRights.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <iterator>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tagsfile {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

void Replace(const std::string& target, const std::string& text, AtLink atLink = AtLink::Refuse)
{
    NewFile file(target, atLink);
    ASSERT_EQ(file.Error(), "");
    EXPECT_TRUE(file.Write(text));
    EXPECT_TRUE(file.Commit()) << file.Error();
}

TEST(NewFile, ReplacesTheOldFileOnCommit)
{
    const TempDirectory directory;
    const std::string target = directory.Write("tags", "old");
    {
        NewFile file(target);
        EXPECT_TRUE(file.Write(std::string(1000000, 'x')));
        EXPECT_EQ(Content(target), "old");
        EXPECT_TRUE(file.Commit());
    }
    EXPECT_EQ(Content(target), std::string(1000000, 'x'));
    EXPECT_EQ(NamesIn(directory.Path()), Texts{"tags"});
}

TEST(NewFile, LeavesNoTraceWithoutACommit)
{
    const TempDirectory directory;
    const std::string target = directory.Write("tags", "old");
    {
        NewFile file(target);
        EXPECT_TRUE(file.Write("new"));
        std::ofstream(file.Directory() + "/temporary of another") << "text";
    }
    EXPECT_EQ(Content(target), "old");
    EXPECT_EQ(NamesIn(directory.Path()), Texts{"tags"});
}

TEST(NewFile, KeepsTheOldFilesPermissions)
{
    const TempDirectory directory;
    const std::string target = directory.Write("tags", "old");
    fs::permissions(target, fs::perms(0640));
    Replace(target, "new");
    EXPECT_EQ(fs::status(target).permissions(), fs::perms(0640));
    const mode_t mask = ::umask(027);
    Replace(directory / "other", "new");
    ::umask(mask);
    EXPECT_EQ(fs::status(directory / "other").permissions(), fs::perms(0640));
}

TEST(NewFile, FollowsALinkOnRequest)
{
    const TempDirectory directory;
    directory.Write("real/tags", "old");
    fs::create_symlink("real/tags", directory / "tags");
    fs::create_symlink("real/new", directory / "dangling");
    Replace(directory / "tags", "one", AtLink::Follow);
    Replace(directory / "dangling", "two", AtLink::Follow);
    EXPECT_TRUE(fs::is_symlink(directory / "tags"));
    EXPECT_EQ(Content(directory / "real/tags"), "one");
    EXPECT_TRUE(fs::is_symlink(directory / "dangling"));
    EXPECT_EQ(Content(directory / "real/new"), "two");
}

TEST(NewFile, RefusesToReplaceALink)
{
    const TempDirectory directory;
    directory.Write("real/tags", "old");
    fs::create_directory_symlink("real", directory / "way");
    for (const char* meant : {"tags", "new", "/none/anything", "link\x9b"}) {
        fs::create_symlink(meant, directory / "real/link");
        const std::string error = NewFile(directory / "way/link").Error();
        EXPECT_NE(error.find(directory / "real/link is a symbolic link to "), std::string::npos) << error;
        EXPECT_EQ(fs::read_symlink(directory / "real/link"), meant);
        EXPECT_EQ(NamesIn(directory / "real"), (Texts{"link", "tags"})) << "nothing was made";
        fs::remove(directory / "real/link");
    }
    EXPECT_EQ(Content(directory / "real/tags"), "old");
}

TEST(NewFile, LeavesALinkThatAppearedMeanwhile)
{
    const TempDirectory directory;
    directory.Write("the user's", "text");
    {
        NewFile file(directory / "tags");
        EXPECT_TRUE(file.Write("new"));
        fs::create_symlink("the user's", directory / "tags");
        EXPECT_FALSE(file.Commit());
        EXPECT_NE(file.Error().find("is a symbolic link to the user's"), std::string::npos) << file.Error();
    }
    EXPECT_EQ(Content(directory / "the user's"), "text");
    EXPECT_EQ(NamesIn(directory.Path()), (Texts{"tags", "the user's"}));
}

TEST(NewFile, LeavesOtherHardLinksOfTheOldFileUnchanged)
{
    const TempDirectory directory;
    directory.Write("the user's", "old");
    fs::create_hard_link(directory / "the user's", directory / "tags");
    Replace(directory / "tags", "new");
    EXPECT_EQ(Content(directory / "tags"), "new");
    EXPECT_EQ(Content(directory / "the user's"), "old");
    EXPECT_EQ(fs::hard_link_count(directory / "the user's"), 1u);
}

TEST(NewFile, MayBeRelativeAndHaveTheLongestName)
{
    const TempDirectory directory;
    const fs::path before = fs::current_path();
    fs::current_path(directory.Path());
    const std::string longest(255, 'n');
    Replace(longest, "text");
    fs::current_path(before);
    EXPECT_EQ(Content(directory / longest), "text");
    EXPECT_EQ(NamesIn(directory.Path()), Texts{longest});
}

TEST(NewFile, ResolvesAParentBehindALinkAsTheSystemDoes)
{
    const TempDirectory directory;
    directory.Write("elsewhere/below/file", "");
    fs::create_symlink("elsewhere/below", directory / "link");
    Replace(directory / "link/../tags", "text");
    EXPECT_EQ(Content(directory / "elsewhere/tags"), "text");
    EXPECT_FALSE(fs::exists(directory / "tags"));
}

TEST(NewFile, KeepsTheOldFilesOwner)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root may give files away";
    const TempDirectory directory;
    const std::string target = directory.Write("tags", "old");
    ASSERT_EQ(::chown(target.c_str(), 1234, 4321), 0);
    fs::permissions(target, fs::perms(0664));
    Replace(target, "new");
    struct stat status;
    ASSERT_EQ(::stat(target.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 1234u);
    EXPECT_EQ(status.st_gid, 4321u);
    EXPECT_EQ(status.st_mode & 07777, 0664u);
}

std::string ErrorFor(const std::string& target)
{
    return NewFile(target).Error();
}

TEST(NewFile, SaysWhyItCannotBeCreated)
{
    const TempDirectory directory;
    EXPECT_EQ(ErrorFor(directory / "missing/tags"),
              "cannot write in " + (directory / "missing") + ": No such file or directory");
    EXPECT_EQ(ErrorFor(directory / "line\nbreak/tags"),
              "cannot write in " + (directory / "line\\nbreak") + ": No such file or directory");
    EXPECT_EQ(ErrorFor(directory.Write("file", "") + "/tags"),
              "cannot write in " + (directory / "file") + ": Not a directory");
    EXPECT_NE(ErrorFor("/proc/self/tags"), "");
    EXPECT_NE(ErrorFor(""), "");
    fs::create_symlink("round", directory / "round");
    EXPECT_NE(ErrorFor(directory / "round/tags"), "");
}

TEST(NewFile, CannotReplaceADirectory)
{
    const TempDirectory directory;
    fs::create_directories(directory / "tags/below");
    for (const std::string& target : {directory / "tags", directory / "tags/", directory / "tags/.", directory.Path()})
        EXPECT_NE(ErrorFor(target).find("it is a directory"), std::string::npos) << target;
    EXPECT_EQ(NamesIn(directory / "tags"), Texts{"below"});
}

TEST(NewFile, LeavesADirectoryThatAppearedMeanwhile)
{
    const TempDirectory directory;
    {
        NewFile file(directory / "tags");
        EXPECT_TRUE(file.Write("new"));
        directory.Write("tags/below", "the user's");
        EXPECT_FALSE(file.Commit());
        EXPECT_EQ(file.Error(), "cannot write " + (directory / "tags") + ": Is a directory");
    }
    EXPECT_EQ(Content(directory / "tags/below"), "the user's");
    EXPECT_EQ(NamesIn(directory.Path()), Texts{"tags"});
}

TEST(NewFile, NeedsAWritableDirectory)
{
    const TempDirectory directory;
    directory.Write("tags", "old");
    fs::permissions(directory.Path(), fs::perms(0555));
    {
        const OrdinaryRights rights;
        EXPECT_EQ(ErrorFor(directory / "tags"), "cannot write in " + directory.Path() + ": Permission denied");
    }
    fs::permissions(directory.Path(), fs::perms(0755));
    EXPECT_EQ(NamesIn(directory.Path()), Texts{"tags"});
}

// In a process with a limited file size: the system then answers as on a full disk.
TEST(NewFile, LeavesTheOldFileWhenItCannotGrow)
{
    const TempDirectory directory;
    const std::string target = directory.Write("tags", "old");
    const pid_t child = ::fork();
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {100000, 100000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        bool refused = false;
        {
            NewFile file(target);
            for (int i = 0; i < 1000 && !refused; ++i)
                refused = !file.Write(std::string(1000, 'x'));
            refused = refused && !file.Commit() && file.Error().find(target) != std::string::npos;
        }
        ::_exit(refused ? 0 : 1);
    }
    int status;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(Content(target), "old");
    EXPECT_EQ(NamesIn(directory.Path()), Texts{"tags"});
}

TEST(NewFile, LeavesOtherUnfinishedFilesAlone)
{
    const TempDirectory directory;
    const std::string target = directory / "tags";
    NewFile first(target);
    EXPECT_TRUE(first.Write("first"));
    Replace(target, "second");
    EXPECT_EQ(Content(target), "second");
    EXPECT_TRUE(first.Commit()) << first.Error();
    EXPECT_EQ(Content(target), "first") << "the later one to end wins";
}

// Some processes look for abandoned directories while others have made but not yet locked theirs.
TEST(NewFile, CanBeMadeByManyProcessesAtOnce)
{
    const TempDirectory directory;
    const std::string target = directory.Write("tags", "old");
    std::vector<pid_t> children;
    for (int i = 0; i < 4; ++i) {
        children.push_back(::fork());
        if (children.back() != 0)
            continue;
        for (int round = 0; round < 100; ++round) {
            NewFile file(target);
            if (!file.Write("new") || !file.Commit())
                ::_exit(1);
        }
        ::_exit(0);
    }
    for (const pid_t child : children) {
        int status;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(Content(target), "new");
    EXPECT_EQ(NamesIn(directory.Path()), Texts{"tags"});
}

TEST(NewFile, FailsWhenItsWorkingDirectoryIsRemoved)
{
    const TempDirectory directory;
    const std::string target = directory.Write("tags", "old");
    NewFile file(target);
    EXPECT_TRUE(file.Write("new"));
    fs::remove_all(file.Directory());
    EXPECT_FALSE(file.Commit());
    EXPECT_EQ(file.Error(), "cannot write " + target + ": No such file or directory");
    EXPECT_EQ(Content(target), "old");
}

} // namespace
} // namespace tagsfile
