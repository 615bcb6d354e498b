#include "wren/core/TextFile.h"

#include "base/FileIdentity.h"
#include "tests/support/FileContent.h"
#include "tests/support/OrdinaryRights.h"
#include "tests/support/TempDirectory.h"
#include "wren/core/Documents.h"

#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

// Returns "" on success, else the reason.
std::string Write(const std::string& path, const std::string& text)
{
    std::string error;
    const bool written = wren::WriteWholeFile(path, text, &error);
    EXPECT_EQ(written, error.empty()) << error;
    return error;
}

struct stat StatusOf(const std::string& path)
{
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status;
}

std::vector<std::string> Temporaries(const std::string& directory)
{
    std::vector<std::string> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory))
        if (entry.path().filename().string().starts_with(".wren-"))
            found.push_back(entry.path());
    return found;
}

// Limits the size of files, like a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t largest)
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const struct rlimit limit = {largest, before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before); }

private:
    struct rlimit before;
};

class WriteWholeFile : public ::testing::Test {
protected:
    WriteWholeFile()
    {
        ::setenv("HOME", home.Path().c_str(), 1);
        ::unsetenv("XDG_STATE_HOME");
    }
    ~WriteWholeFile() override
    {
        ::chmod(directory.Path().c_str(), 0700);
        EXPECT_THAT(Temporaries(directory.Path()), IsEmpty());
        if (fs::exists(Overwritten())) {
            EXPECT_TRUE(fs::is_empty(Overwritten()));
        }
    }
    std::string Overwritten() const { return home / ".local/state/wren/overwritten"; }

    const TempDirectory home;
    const TempDirectory directory;
};

} // namespace

TEST_F(WriteWholeFile, CreatesAFileWithDefaultPermissions)
{
    const std::string file = directory / "new.c";
    const mode_t mask = ::umask(027);
    EXPECT_EQ(Write(file, std::string("a\0\xff\n", 4)), "");
    ::umask(mask);
    EXPECT_EQ(Content(file), std::string("a\0\xff\n", 4));
    EXPECT_EQ(StatusOf(file).st_mode & 07777, 0640u);
}

TEST_F(WriteWholeFile, KeepsPermissionsAndOwner)
{
    const std::string file = directory.Write("a.c", "old");
    if (::geteuid() == 0) { // root may write other users' files
        ASSERT_EQ(::chown(file.c_str(), 1234, 4321), 0);
    }
    for (const mode_t mode : {0600u, 0755u, 0664u}) {
        ASSERT_EQ(::chmod(file.c_str(), mode), 0);
        const uid_t owner = StatusOf(file).st_uid;
        EXPECT_EQ(Write(file, "new"), "");
        EXPECT_EQ(Content(file), "new");
        EXPECT_EQ(StatusOf(file).st_mode & 07777, mode);
        EXPECT_EQ(StatusOf(file).st_uid, owner);
    }
}

TEST_F(WriteWholeFile, KeepsExtendedAttributes)
{
    const std::string file = directory.Write("a.c", "old");
    if (::setxattr(file.c_str(), "user.wren.test", "x", 1, 0) != 0)
        GTEST_SKIP() << "the file system keeps no notes";
    EXPECT_EQ(Write(file, "new"), "");
    char value = 0;
    EXPECT_EQ(::getxattr(file.c_str(), "user.wren.test", &value, 1), 1);
    EXPECT_EQ(value, 'x');
}

TEST_F(WriteWholeFile, ShowsReadersEitherTheOldOrTheNewFile)
{
    const std::string file = directory.Write("a.c", "old");
    FILE* reader = std::fopen(file.c_str(), "rb");
    EXPECT_EQ(Write(file, "new text"), "");
    char text[16] = {};
    EXPECT_EQ(std::fread(text, 1, sizeof text, reader), 3u);
    std::fclose(reader);
    EXPECT_STREQ(text, "old");
}

TEST_F(WriteWholeFile, WritesThroughALink)
{
    fs::create_directory(directory / "sub");
    const std::string file = directory.Write("sub/real.c", "old");
    fs::create_symlink("sub/real.c", directory / "one");
    fs::create_symlink(directory / "one", directory / "two");
    EXPECT_EQ(Write(directory / "two", "new"), "");
    EXPECT_TRUE(fs::is_symlink(directory / "one"));
    EXPECT_TRUE(fs::is_symlink(directory / "two"));
    EXPECT_EQ(Content(file), "new");
}

TEST_F(WriteWholeFile, CreatesTheMissingTargetOfALink)
{
    fs::create_symlink("missing.c", directory / "link");
    EXPECT_EQ(Write(directory / "link", "new"), "");
    EXPECT_TRUE(fs::is_symlink(directory / "link"));
    EXPECT_EQ(Content(directory / "missing.c"), "new");
}

TEST_F(WriteWholeFile, WritesIntoAFileWithHardLinks)
{
    const std::string file = directory.Write("a.c", "the old text, which is longer");
    fs::create_hard_link(file, directory / "b.c");
    EXPECT_EQ(Write(file, "new"), "");
    EXPECT_EQ(Content(directory / "b.c"), "new");
    EXPECT_EQ(Write(file, "and longer again than it was"), "");
    EXPECT_EQ(Content(directory / "b.c"), "and longer again than it was");
}

TEST_F(WriteWholeFile, WritesIntoAFileInAReadOnlyDirectory)
{
    const std::string file = directory.Write("a.c", "old");
    ASSERT_EQ(::chmod(directory.Path().c_str(), 0555), 0);
    const std::uint64_t before = base::FileIdentity::At(file)->inode;
    {
        const OrdinaryRights rights;
        EXPECT_EQ(Write(file, "new"), "");
    }
    EXPECT_EQ(Content(file), "new");
    EXPECT_EQ(base::FileIdentity::At(file)->inode, before);
}

TEST_F(WriteWholeFile, WritesIntoAFileWhoseOwnerCannotBeKept)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make somebody else's file";
    const std::string file = directory.Write("a.c", "old");
    ASSERT_EQ(::chown(file.c_str(), 1234, 4321), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
    {
        const OrdinaryRights rights;
        EXPECT_EQ(Write(file, "new"), "");
    }
    EXPECT_EQ(Content(file), "new");
    EXPECT_EQ(StatusOf(file).st_uid, 1234u);
}

TEST_F(WriteWholeFile, RefusesADirectory)
{
    EXPECT_EQ(Write(directory.Path(), "new"), directory.Path() + ": Is a directory");
}

TEST_F(WriteWholeFile, RefusesNonFiles)
{
    EXPECT_EQ(Write("/dev/null", "new"), "/dev/null: Invalid argument");
    EXPECT_TRUE(S_ISCHR(StatusOf("/dev/null").st_mode));
}

TEST_F(WriteWholeFile, RefusesCircularLinks)
{
    fs::create_symlink("b", directory / "a");
    fs::create_symlink("a", directory / "b");
    EXPECT_THAT(Write(directory / "a", "new"), StartsWith((directory / "a") + ": "));
}

TEST_F(WriteWholeFile, LeavesAReadOnlyFileAlone)
{
    const std::string file = directory.Write("a.c", "old");
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    {
        const OrdinaryRights rights;
        EXPECT_EQ(Write(file, "new"), file + ": Permission denied");
    }
    EXPECT_EQ(Content(file), "old");
}

TEST_F(WriteWholeFile, ReportsAReadOnlyDirectory)
{
    const std::string file = directory / "a.c";
    ASSERT_EQ(::chmod(directory.Path().c_str(), 0555), 0);
    const OrdinaryRights rights;
    EXPECT_EQ(Write(file, "new"), file + ": Permission denied");
}

TEST_F(WriteWholeFile, ReportsAMissingDirectory)
{
    const std::string file = directory / "gone/a.c";
    EXPECT_EQ(Write(file, "new"), file + ": No such file or directory");
    EXPECT_FALSE(fs::exists(directory / "gone"));
}

TEST_F(WriteWholeFile, LeavesTheOldFileWholeOnAFullDisk)
{
    const std::string file = directory.Write("a.c", "old");
    {
        const FullDisk disk(4096);
        EXPECT_THAT(Write(file, std::string(10'000, 'n')), StartsWith(file + ": "));
    }
    EXPECT_EQ(Content(file), "old");
}

TEST_F(WriteWholeFile, LeavesAFileWithHardLinksWholeOnAFullDisk)
{
    const std::string file = directory.Write("a.c", "old");
    fs::create_hard_link(file, directory / "b.c");
    const std::optional<base::FileIdentity> before = base::FileIdentity::At(file);
    {
        const FullDisk disk(4096);
        EXPECT_THAT(Write(file, std::string(10'000, 'n')), StartsWith(file + ": "));
    }
    EXPECT_EQ(Content(file), "old");
    EXPECT_EQ(base::FileIdentity::At(file)->size, before->size);
}

TEST_F(WriteWholeFile, WritesNothingInPlaceWithoutACopyOfTheOldText)
{
    const std::string file = directory.Write("a.c", "old");
    fs::create_hard_link(file, directory / "b.c");
    ::unsetenv("HOME");
    EXPECT_THAT(Write(file, "new"), ::testing::AllOf(StartsWith(file + ": "), HasSubstr("no home directory")));
    EXPECT_EQ(Content(file), "old");
}
