#include "base/FileIdentity.h"

#include "base/Descriptor.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace base {
namespace {

namespace fs = std::filesystem;

TEST(FileIdentity, IdentifiesAPlainFileUntilItChanges)
{
    const TempDirectory directory;
    const std::string path = directory.Write("file", "content");
    const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    const std::optional<FileIdentity> identity = FileIdentity::OfPlainFile(file);
    ASSERT_TRUE(identity);
    EXPECT_EQ(identity->size, 7);
    EXPECT_EQ(FileIdentity::OfPlainFile(file), identity);
    fs::rename(path, directory / "renamed");
    fs::permissions(directory / "renamed", fs::perms::owner_all);
    EXPECT_EQ(FileIdentity::OfPlainFile(file), identity) << "the name and who may read it are no part of it";
    const timespec later[] = {identity->modified, {identity->modified.tv_sec, identity->modified.tv_nsec ^ 1}};
    ::futimens(file, later);
    EXPECT_NE(FileIdentity::OfPlainFile(file), identity) << "a nanosecond";
    ::close(file);

    const int folder = ::open(directory.Path().c_str(), O_RDONLY | O_CLOEXEC);
    EXPECT_FALSE(FileIdentity::OfPlainFile(folder));
    ::close(folder);
    EXPECT_FALSE(FileIdentity::OfPlainFile(-1));
}

TEST(FileIdentity, IsSettledSomeTimeAfterAChange)
{
    const time_t now = ::time(nullptr);
    const struct {
        time_t seconds; // relative to now
        bool settled;
    } kCases[] = {{-1'000'000, true}, {-10, true}, {-1, false}, {0, false}, {1, false}, {10, true}, {1'000'000, true}};
    for (const auto& c : kCases) {
        FileIdentity file;
        file.modified.tv_sec = now + c.seconds;
        EXPECT_EQ(file.HasSettled(), c.settled) << c.seconds;
    }
}

TEST(FileIdentity, IsOfWhatALinkLeadsTo)
{
    const TempDirectory directory;
    const std::string path = directory.Write("file", "one");
    fs::create_symlink(path, directory / "link");
    const std::optional<FileIdentity> identity = FileIdentity::At(path);
    ASSERT_TRUE(identity);
    EXPECT_EQ(FileIdentity::At(directory / "link"), identity);
    EXPECT_FALSE(FileIdentity::At(directory / "missing"));
}

TEST(FileIdentity, MayDisregardTheDevice)
{
    const FileIdentity one = {1, 2, 3, {4, 5}};
    FileIdentity other = one;
    other.device = 9;
    EXPECT_NE(other, one);
    EXPECT_TRUE(other.IsSameOnSomeDevice(one));
    other.inode = 9;
    EXPECT_FALSE(other.IsSameOnSomeDevice(one));
}

TEST(IsStillAt, IsTrueUntilAnotherFileHasTheName)
{
    const TempDirectory directory;
    const std::string path = directory.Write("lock", "");
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    EXPECT_TRUE(IsStillAt(file.Number(), path));
    fs::rename(path, directory / "renamed");
    EXPECT_FALSE(IsStillAt(file.Number(), path)) << "nothing has it";
    fs::create_symlink("renamed", path);
    EXPECT_FALSE(IsStillAt(file.Number(), path)) << "a link to it";
    fs::remove(path);
    directory.Write("lock", "");
    EXPECT_FALSE(IsStillAt(file.Number(), path)) << "another file";
}

} // namespace
} // namespace base
