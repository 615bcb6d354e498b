#include "base/NewFile.h"

#include "tests/support/FileContent.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace base {
namespace {

namespace fs = std::filesystem;

class InDirectory : public testing::Test {
protected:
    long Entries() const { return std::distance(fs::directory_iterator(files.Path()), fs::directory_iterator()); }

    const TempDirectory files;
};

using NewFileTest = InDirectory;

TEST_F(NewFileTest, TakesThePlaceOfTheOldOneAsAWhole)
{
    files.Write("target", "old");
    Result<NewFile> file = NewFile::Make(files / "new", 0640);
    ASSERT_TRUE(file);
    EXPECT_TRUE(WriteAll(file->Number(), "new"));
    EXPECT_EQ(Content(files / "target"), "old");
    EXPECT_TRUE(file->MoveTo(files / "target"));
    EXPECT_EQ(Content(files / "target"), "new");
    EXPECT_EQ(file->Path(), "");
    EXPECT_EQ(Entries(), 1);
}

TEST_F(NewFileTest, GoesWithItsOwnerWhereItHasNotTakenItsPlace)
{
    {
        Result<NewFile> made = NewFile::MakeUnique(files / "new-");
        ASSERT_TRUE(made);
        EXPECT_TRUE(made->Path().starts_with(files / "new-")) << made->Path();
        const NewFile moved = std::move(*made);
        EXPECT_EQ(Entries(), 1) << "a former owner removes nothing";
    }
    EXPECT_EQ(Entries(), 0);
}

TEST_F(NewFileTest, FailsWhereSomethingHasItsName)
{
    files.Write("new", "another's");
    const Result<NewFile> file = NewFile::Make(files / "new", 0600);
    ASSERT_FALSE(file);
    EXPECT_EQ(file.Failure().number, EEXIST);
    EXPECT_EQ(Content(files / "new"), "another's");
}

TEST_F(NewFileTest, LeavesTheOldFileWhereItCannotTakeItsPlace)
{
    fs::create_directory(files / "target");
    {
        Result<NewFile> file = NewFile::MakeUnique(files / "new-");
        const Result<void> moved = file->MoveTo(files / "target");
        ASSERT_FALSE(moved);
        EXPECT_EQ(moved.Failure().Message(), "cannot write " + (files / "target") + ": Is a directory");
    }
    EXPECT_TRUE(fs::is_directory(files / "target"));
    EXPECT_EQ(Entries(), 1);
}

TEST_F(NewFileTest, IsForTheUserAloneUnderAUniqueName)
{
    const Result<NewFile> file = NewFile::MakeUnique(files / "new-");
    struct stat status = {};
    ::fstat(file->Number(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST(WriteAll, ReportsWhyItCannot)
{
    const Result<void> written = WriteAll(1'000'000, "text");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.Failure().number, EBADF);
    EXPECT_TRUE(WriteAll(1'000'000, "")) << "there is nothing to write";
}

} // namespace
} // namespace base
