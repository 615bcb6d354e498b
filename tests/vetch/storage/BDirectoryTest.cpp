#include "vetch/storage/BDirectory.h"

#include "tests/support/OrdinaryRights.h"
#include "tests/support/TempDirectory.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/BPath.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

std::string PathOf(const BEntry& entry)
{
    return BPath(&entry).Path();
}

class BDirectoryTest : public testing::Test {
protected:
    const TempDirectory directory;
    const std::string file = directory.Write("src/a.h", "");
};

} // namespace

TEST_F(BDirectoryTest, OpensDirectoriesOnly)
{
    std::filesystem::create_directory_symlink("src", directory / "link to a directory");
    std::filesystem::create_symlink("nowhere", directory / "dangling");
    const struct {
        const char* why;
        std::string path;
        status_t status;
    } kCases[] = {
        {"a directory", directory / "src", B_OK},
        {"the root", "/", B_OK},
        {"through a link", directory / "link to a directory", B_OK},
        {"a file", file, B_ERROR},
        {"nothing", directory / "missing", B_ENTRY_NOT_FOUND},
        {"below a file", file + "/x", B_ENTRY_NOT_FOUND},
        {"a link that leads nowhere", directory / "dangling", B_ENTRY_NOT_FOUND},
        {"no path", "", B_ERROR},
    };
    for (const auto& c : kCases) {
        const BEntry entry(c.path.c_str());
        EXPECT_EQ(BDirectory(c.path.c_str()).InitCheck(), c.status) << c.why;
        EXPECT_EQ(BDirectory(&entry).InitCheck(), c.status) << c.why;
    }
    EXPECT_EQ(BDirectory(static_cast<const BEntry*>(nullptr)).InitCheck(), B_ERROR);
    EXPECT_EQ(BDirectory(static_cast<const char*>(nullptr)).InitCheck(), B_ERROR);
}

TEST_F(BDirectoryTest, RefusesADirectoryThatMayNotBeSearched)
{
    namespace fs = std::filesystem;
    directory.Write("closed/x", "");
    fs::permissions(directory / "closed", fs::perms::owner_read);
    fs::permissions(directory.Path(), fs::perms::owner_exec);
    {
        const OrdinaryRights rights;
        EXPECT_EQ(BDirectory((directory / "closed").c_str()).InitCheck(), B_ERROR);
        EXPECT_EQ(BDirectory(directory.Path().c_str()).InitCheck(), B_OK) << "one that cannot be listed is searched";
    }
    for (const std::string& each : {directory.Path(), directory / "closed"})
        fs::permissions(each, fs::perms::owner_all); // else they could not be removed
}

TEST_F(BDirectoryTest, FindsAnEntryOfAnyKindByItsExactName)
{
    std::filesystem::create_directory(directory / "tags");
    std::filesystem::create_symlink("nowhere", directory / "dangling");
    std::filesystem::create_symlink("src/a.h", directory / "link");
    const BDirectory opened(directory.Path().c_str());
    const struct {
        const char* why;
        const char* name;
        bool traverse;
        std::string path; // "" when it is not found
    } kCases[] = {
        {"a directory", "tags", false, directory / "tags"},
        {"a link that leads nowhere", "dangling", false, directory / "dangling"},
        {"a link", "link", false, directory / "link"},
        {"what a link leads to", "link", true, file},
        {"another case", "Tags", false, ""},
        {"a name too short", "tag", false, ""},
        {"a path is not a name", "src/a.h", false, ""},
        {"nor is an absolute one", "/usr", false, ""},
        {"no name", "", false, ""},
    };
    for (const auto& c : kCases) {
        BEntry entry("/usr");
        EXPECT_EQ(opened.FindEntry(c.name, &entry, c.traverse), c.path.empty() ? B_ENTRY_NOT_FOUND : B_OK) << c.why;
        EXPECT_EQ(PathOf(entry), c.path) << c.why;
    }
    EXPECT_EQ(opened.FindEntry("tags", nullptr), B_ERROR);
}

TEST_F(BDirectoryTest, FindsNothingWhenClosed)
{
    BEntry entry("/usr");
    EXPECT_EQ(BDirectory(file.c_str()).FindEntry("a.h", &entry), B_ERROR);
    EXPECT_EQ(entry.InitCheck(), B_ERROR);
}

TEST_F(BDirectoryTest, KnowsTheRootByItsPath)
{
    std::filesystem::create_directory_symlink("/", directory / "link to the root");
    EXPECT_TRUE(BDirectory("/").IsRootDirectory());
    EXPECT_TRUE(BDirectory("/usr/..").IsRootDirectory());
    EXPECT_FALSE(BDirectory("/usr").IsRootDirectory());
    EXPECT_FALSE(BDirectory("").IsRootDirectory());
    EXPECT_FALSE(BDirectory((directory / "link to the root").c_str()).IsRootDirectory())
        << "going up from there leads back to where the link is";
}

TEST_F(BDirectoryTest, GivesItsEntry)
{
    BEntry entry;
    EXPECT_EQ(BDirectory((directory / "src/").c_str()).GetEntry(&entry), B_OK);
    EXPECT_EQ(PathOf(entry), directory / "src");
    EXPECT_EQ(BDirectory(file.c_str()).GetEntry(&entry), B_ERROR);
    EXPECT_EQ(entry.InitCheck(), B_ERROR);
    EXPECT_EQ(BDirectory("/").GetEntry(nullptr), B_ERROR);
}

TEST_F(BDirectoryTest, SupportsAWalkUpwardsInPlace)
{
    directory.Write("tags", "");
    BEntry entry((directory / "src").c_str());
    const BDirectory source(&entry);
    EXPECT_EQ(source.FindEntry("tags", &entry), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(source.GetEntry(&entry), B_OK);
    EXPECT_EQ(entry.GetParent(&entry), B_OK);
    EXPECT_EQ(BDirectory(&entry).FindEntry("tags", &entry), B_OK);
    EXPECT_EQ(PathOf(entry), directory / "tags");
}
