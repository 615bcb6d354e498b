#include "cplustags/NewFile.h"

#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <iterator>
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

TEST(NewFile, SaysWhereItCannotBeMade)
{
    const TempDirectory directory;
    const NewFile file(directory / "missing/tags");
    EXPECT_EQ(file.Error(), "cannot write in " + (directory / "missing") + ": No such file or directory");
}

TEST(NewFile, CannotReplaceADirectory)
{
    const TempDirectory directory;
    fs::create_directories(directory / "tags/below");
    NewFile file(directory / "tags");
    EXPECT_TRUE(file.Write("new"));
    EXPECT_FALSE(file.Commit());
    EXPECT_NE(file.Error().find(directory / "tags"), std::string::npos) << file.Error();
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

} // namespace
} // namespace cplustags
