#include "cplustags/NewFile.h"

#include "cplustags/Descriptor.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <iterator>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cplustags {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

std::string Content(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

Texts Names(const std::string& directory)
{
    Texts names;
    for (const auto& entry : fs::directory_iterator(directory))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

void Replace(const std::string& target, const std::string& text)
{
    NewFile file(target);
    ASSERT_EQ(file.Error(), "");
    EXPECT_TRUE(file.Write(text));
    EXPECT_TRUE(file.Commit()) << file.Error();
}

TEST(NewFile, TakesThePlaceAtTheEnd)
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
    EXPECT_EQ(Names(directory.Path()), Texts{"tags"});
}

TEST(NewFile, ThatIsNotCommittedLeavesNoTrace)
{
    const TempDirectory directory;
    const std::string target = directory.Write("tags", "old");
    {
        NewFile file(target);
        EXPECT_TRUE(file.Write("new"));
        std::ofstream(file.Directory() + "/temporary of another") << "text";
    }
    EXPECT_EQ(Content(target), "old");
    EXPECT_EQ(Names(directory.Path()), Texts{"tags"});
}

TEST(NewFile, HasTheOldFilesPermissionsOrThoseOfANewOne)
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

TEST(NewFile, GoesWhereALinkPoints)
{
    const TempDirectory directory;
    directory.Write("real/tags", "old");
    fs::create_symlink("real/tags", directory / "tags");
    fs::create_symlink("real/new", directory / "dangling");
    Replace(directory / "tags", "one");
    Replace(directory / "dangling", "two");
    EXPECT_TRUE(fs::is_symlink(directory / "tags"));
    EXPECT_EQ(Content(directory / "real/tags"), "one");
    EXPECT_TRUE(fs::is_symlink(directory / "dangling"));
    EXPECT_EQ(Content(directory / "real/new"), "two");
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
    EXPECT_EQ(Names(directory.Path()), Texts{longest});
}

TEST(NewFile, GoesWhereTheSystemFindsAParentBehindALink)
{
    const TempDirectory directory;
    directory.Write("elsewhere/below/file", "");
    fs::create_symlink("elsewhere/below", directory / "link");
    Replace(directory / "link/../tags", "text");
    EXPECT_EQ(Content(directory / "elsewhere/tags"), "text");
    EXPECT_FALSE(fs::exists(directory / "tags"));
}

TEST(NewFile, StaysWhoseTheOldOneWas)
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

TEST(NewFile, SaysWhereItCannotBeMade)
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
    EXPECT_EQ(Names(directory / "tags"), Texts{"below"});
}

TEST(NewFile, LeavesAFileThatBecameADirectoryMeanwhile)
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
    EXPECT_EQ(Names(directory.Path()), Texts{"tags"});
}

// Root may write everywhere, so it is somebody else who tries.
TEST(NewFile, NeedsADirectoryThatCanBeWritten)
{
    const TempDirectory directory;
    directory.Write("tags", "old");
    fs::permissions(directory.Path(), fs::perms(0555));
    const pid_t child = ::fork();
    if (child == 0) {
        if (::geteuid() == 0 && ::setuid(65534) != 0)
            ::_exit(2);
        ::_exit(ErrorFor(directory / "tags") == "cannot write in " + directory.Path() + ": Permission denied" ? 0 : 1);
    }
    int status;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    fs::permissions(directory.Path(), fs::perms(0755));
    EXPECT_EQ(Names(directory.Path()), Texts{"tags"});
}

// In a process of its own, whose files may not grow beyond a limit: the system answers as on a full disk.
TEST(NewFile, ThatCannotGrowLeavesTheOldOne)
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
    EXPECT_EQ(Names(directory.Path()), Texts{"tags"});
}

// A process that is killed while it writes.
void KillWriter(const std::string& target)
{
    const pid_t child = ::fork();
    if (child == 0) {
        NewFile file(target);
        file.Write(std::string(1000000, 'x'));
        ::kill(::getpid(), SIGKILL);
    }
    int status;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
}

TEST(NewFile, RemovesWhatAKilledProcessLeft)
{
    const TempDirectory directory;
    const std::string target = directory.Write("tags", "old");
    directory.Write(".tags.cplustags-is no directory", "the user's");
    KillWriter(target);
    EXPECT_EQ(Content(target), "old");
    EXPECT_EQ(Names(directory.Path()).size(), 3u);
    KillWriter(directory / "other");
    EXPECT_EQ(Names(directory.Path()).size(), 4u) << "what is left for another file is not looked at";
    Replace(target, "new");
    EXPECT_EQ(Names(directory.Path()).size(), 3u);
    Replace(directory / "other", "new");
    EXPECT_EQ(Names(directory.Path()), (Texts{".tags.cplustags-is no directory", "other", "tags"}));
}

TEST(NewFile, LeavesThoseAloneThatAreStillBeingWritten)
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

// Whatever a killed process may leave goes, and what only looks like it stays.
TEST(NewFile, RemovesWhatWasItsOwnAndNothingElse)
{
    const TempDirectory directory;
    directory.Write(".tags.cplustags-LocK01/lock", "");
    directory.Write(".tags.cplustags-LocK02/lock", "");
    directory.Write(".tags.cplustags-LocK02/new", "text");
    directory.Write(".tags.cplustags-LocK02/temporary/file", "text");
    fs::create_directories(directory / ".tags.cplustags-emPty0");
    directory.Write(".tags.cplustags-backup/without a lock", "the user's");
    directory.Write(".tags.cplustags-backups/lock", "the user's");
    directory.Write(".tags.cplustags-a file/lock", "the user's");
    directory.Write(".tags.cplustags-x.cplustags-LocK03/lock", "another target's");
    directory.Write("real/lock", "the user's");
    fs::create_symlink("real", directory / ".tags.cplustags-linked");
    Replace(directory / "tags", "new");
    EXPECT_EQ(Names(directory.Path()),
              (Texts{".tags.cplustags-a file", ".tags.cplustags-backup", ".tags.cplustags-backups",
                     ".tags.cplustags-linked", ".tags.cplustags-x.cplustags-LocK03", "real", "tags"}));
    EXPECT_EQ(Names(directory / "real"), Texts{"lock"});
    EXPECT_EQ(Names(directory / ".tags.cplustags-backup"), Texts{"without a lock"});
}

TEST(NewFile, WaitsForNobodyWhoHasLockedTheDirectory)
{
    const TempDirectory directory;
    const Descriptor locked(::open(directory.Path().c_str(), O_RDONLY | O_DIRECTORY));
    ASSERT_EQ(::flock(locked.Number(), LOCK_EX), 0);
    Replace(directory / "tags", "new");
    EXPECT_EQ(Content(directory / "tags"), "new");
}

// Newcomers look for what is abandoned while others have just made, and not yet locked, what is theirs.
TEST(NewFile, CanBeMadeByManyAtOnce)
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
    EXPECT_EQ(Names(directory.Path()), Texts{"tags"});
}

TEST(NewFile, SaysSoWhenItsDirectoryIsTakenAway)
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
} // namespace cplustags
