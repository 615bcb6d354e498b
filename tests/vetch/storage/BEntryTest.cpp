#include "vetch/storage/BEntry.h"

#include "tests/support/TempDirectory.h"
#include "vetch/storage/BDirectory.h"
#include "vetch/storage/BPath.h"
#include "vetch/storage/EntryRef.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <sys/stat.h>

namespace {

std::string PathOf(const BEntry& entry)
{
    return BPath(&entry).Path();
}

class BEntryTest : public testing::Test {
protected:
    const TempDirectory directory;
    const std::string file = directory.Write("src/a.h", "12345");
};

} // namespace

TEST_F(BEntryTest, IsUnsetWithoutAPath)
{
    const BDirectory missing((directory / "missing").c_str());
    const BDirectory source((directory / "src").c_str());
    const EntryRef noRef;
    const struct {
        const char* why;
        BEntry entry;
    } kCases[] = {
        {"made from nothing", BEntry()},
        {"no text", BEntry(static_cast<const char*>(nullptr))},
        {"empty text", BEntry("")},
        {"no reference", BEntry(static_cast<const EntryRef*>(nullptr))},
        {"an unset reference", BEntry(&noRef)},
        {"no directory", BEntry(nullptr, "a.h")},
        {"a directory that is not there", BEntry(&missing, "a.h")},
        {"no leaf", BEntry(&source, static_cast<const char*>(nullptr))},
        {"an empty leaf", BEntry(&source, "")},
    };
    for (const auto& c : kCases) {
        BPath path("/x");
        EntryRef ref("/x");
        BEntry parent("/x");
        struct stat status;
        EXPECT_EQ(c.entry.InitCheck(), B_ERROR) << c.why;
        EXPECT_FALSE(c.entry.Exists()) << c.why;
        EXPECT_EQ(c.entry.GetPath(&path), B_ERROR) << c.why;
        EXPECT_STREQ(path.Path(), "") << c.why;
        EXPECT_EQ(c.entry.GetRef(&ref), B_ERROR) << c.why;
        EXPECT_EQ(ref.name, nullptr) << c.why;
        EXPECT_EQ(c.entry.GetParent(&parent), B_ERROR) << c.why;
        EXPECT_EQ(PathOf(parent), "") << c.why;
        EXPECT_EQ(c.entry.GetStat(&status), B_ERROR) << c.why;
    }
}

TEST_F(BEntryTest, NamesAnExistingFile)
{
    const BEntry entry((directory / "src/../src//a.h").c_str());
    EXPECT_EQ(entry.InitCheck(), B_OK);
    EXPECT_TRUE(entry.Exists());
    EXPECT_EQ(PathOf(entry), file);

    EntryRef ref;
    EXPECT_EQ(entry.GetRef(&ref), B_OK);
    EXPECT_EQ(ref.Path(), file);
    EXPECT_EQ(PathOf(BEntry(&ref)), file);

    struct stat status;
    EXPECT_EQ(entry.GetStat(&status), B_OK);
    EXPECT_EQ(status.st_size, 5);
}

TEST_F(BEntryTest, KeepsThePathOfAMissingLeaf)
{
    const BEntry entry((directory / "src/later.h").c_str());
    EXPECT_EQ(entry.InitCheck(), B_ENTRY_NOT_FOUND);
    EXPECT_FALSE(entry.Exists());
    EXPECT_EQ(PathOf(entry), directory / "src/later.h");

    EntryRef ref;
    EXPECT_EQ(entry.GetRef(&ref), B_OK);
    EXPECT_STREQ(ref.name, "later.h");
    BEntry parent;
    EXPECT_EQ(entry.GetParent(&parent), B_OK);
    EXPECT_EQ(PathOf(parent), directory / "src");
    struct stat status;
    EXPECT_EQ(entry.GetStat(&status), B_ENTRY_NOT_FOUND);

    directory.Write("src/later.h", "");
    EXPECT_TRUE(entry.Exists()) << "asked of the disk each time";
    EXPECT_EQ(entry.InitCheck(), B_ENTRY_NOT_FOUND) << "as of when it was set";
}

TEST_F(BEntryTest, IsSetFromADirectoryAndALeaf)
{
    const BDirectory source((directory / "src").c_str());
    const BDirectory missing((directory / "missing").c_str());
    const struct {
        const char* why;
        const BDirectory* directory;
        std::string leaf;
        std::string path;
        status_t status;
    } kCases[] = {
        {"a name in it", &source, "a.h", file, B_OK},
        {"a path below it", &source, "../src/a.h", file, B_OK},
        {"a missing name", &source, "b.h", directory / "src/b.h", B_ENTRY_NOT_FOUND},
        {"an absolute leaf stands alone", &source, "/usr", "/usr", B_OK},
        {"even where there is no such directory", &missing, file, file, B_OK},
    };
    for (const auto& c : kCases) {
        const BEntry entry(c.directory, c.leaf.c_str());
        EXPECT_EQ(entry.InitCheck(), c.status) << c.why;
        EXPECT_EQ(PathOf(entry), c.path) << c.why;
    }
}

TEST_F(BEntryTest, FollowsALinkOnlyWhenAsked)
{
    namespace fs = std::filesystem;
    fs::create_symlink("src/a.h", directory / "link");
    fs::create_symlink("link", directory / "link to the link");
    fs::create_symlink("nowhere", directory / "dangling");
    fs::create_symlink("circle", directory / "circle");
    fs::create_directory_symlink("src", directory / "folder");
    const struct {
        const char* why;
        std::string path;
        bool traverse;
        std::string result;
        status_t status;
    } kCases[] = {
        {"the link itself", directory / "link", false, directory / "link", B_OK},
        {"what it leads to", directory / "link", true, file, B_OK},
        {"through several", directory / "link to the link", true, file, B_OK},
        {"a link that leads nowhere is there itself", directory / "dangling", true, directory / "dangling", B_OK},
        {"as is one that leads to itself", directory / "circle", true, directory / "circle", B_OK},
        {"no link", file, true, file, B_OK},
        {"nothing", directory / "nothing", true, directory / "nothing", B_ENTRY_NOT_FOUND},
        {"links further up stay as they are written", directory / "folder/a.h", true, directory / "folder/a.h", B_OK},
    };
    for (const auto& c : kCases) {
        const EntryRef ref(c.path.c_str());
        const BDirectory parent(directory.Path().c_str());
        const BEntry entries[] = {BEntry(c.path.c_str(), c.traverse), BEntry(&ref, c.traverse),
                                  BEntry(&parent, c.path.substr(directory.Path().size() + 1).c_str(), c.traverse)};
        for (const BEntry& entry : entries) {
            EXPECT_EQ(PathOf(entry), c.result) << c.why;
            EXPECT_EQ(entry.InitCheck(), c.status) << c.why;
        }
    }
}

TEST_F(BEntryTest, GivesTheStatusOfALinkItself)
{
    std::filesystem::create_symlink("src/a.h", directory / "link");
    struct stat status;
    EXPECT_EQ(BEntry((directory / "link").c_str()).GetStat(&status), B_OK);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
    EXPECT_EQ(BEntry((directory / "link").c_str(), true).GetStat(&status), B_OK);
    EXPECT_TRUE(S_ISREG(status.st_mode));
}

TEST_F(BEntryTest, WalksUpToTheRootInPlace)
{
    BEntry entry("/usr/include/c++");
    EXPECT_EQ(entry.GetParent(&entry), B_OK);
    EXPECT_EQ(PathOf(entry), "/usr/include");
    EXPECT_EQ(entry.GetParent(&entry), B_OK);
    EXPECT_EQ(entry.GetParent(&entry), B_OK);
    EXPECT_EQ(PathOf(entry), "/");
    EXPECT_EQ(entry.GetParent(&entry), B_ENTRY_NOT_FOUND) << "the root has no parent";
    EXPECT_EQ(entry.InitCheck(), B_ERROR);
    EXPECT_EQ(entry.GetParent(&entry), B_ERROR) << "and then it is unset";
}

TEST_F(BEntryTest, IsSetFromItsOwnParts)
{
    BEntry entry(file.c_str());
    entry = *&entry;
    EntryRef ref;
    entry.GetRef(&ref);
    EXPECT_EQ(entry.SetTo(&ref), B_OK);
    const BPath path(&entry);
    EXPECT_EQ(entry.SetTo(path.Path()), B_OK);
    EXPECT_EQ(PathOf(entry), file);
}

TEST_F(BEntryTest, CopiesAreIndependent)
{
    BEntry entry(file.c_str());
    const BEntry copy = entry;
    entry.Unset();
    EXPECT_EQ(entry.InitCheck(), B_ERROR);
    EXPECT_EQ(copy.InitCheck(), B_OK);
    EXPECT_EQ(PathOf(copy), file);
}

TEST_F(BEntryTest, RefusesNullArguments)
{
    const BEntry entry(file.c_str());
    EXPECT_EQ(entry.GetParent(nullptr), B_ERROR);
    EXPECT_EQ(entry.GetPath(nullptr), B_ERROR);
    EXPECT_EQ(entry.GetRef(nullptr), B_ERROR);
    EXPECT_EQ(entry.GetStat(nullptr), B_ERROR);
}
