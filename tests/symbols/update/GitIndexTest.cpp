#include "symbols/update/GitIndex.h"

#include "tests/support/FileContent.h"
#include "tests/support/GitRepository.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

namespace symbols {

namespace {

GitIndex Read(const TempDirectory& directory, const std::string& text)
{
    directory.Write("index", text);
    return GitIndex(directory.Path(), 20);
}

} // namespace

TEST(GitIndex, TracksNothingWithoutAFile)
{
    const TempDirectory directory;
    const GitIndex index(directory.Path(), 20);
    EXPECT_EQ(index.Size(), 0u);
    EXPECT_FALSE(index.Tracks("a.c"));
    EXPECT_FALSE(index.TracksBelow("a"));
}

TEST(GitIndex, TracksFilesAndWhatIsAboveThem)
{
    if (!GitRepository::IsPossible())
        GTEST_SKIP() << "git is not installed";
    const GitRepository repository;
    for (const char* path : {"a/b.c", "a-b/c.c", "d.c"})
        repository.Write(path, "");
    repository.Git({"add", "."});
    const GitIndex index(repository.Top() + "/.git", 20);
    EXPECT_TRUE(index.Tracks("a/b.c"));
    EXPECT_FALSE(index.Tracks("a/b"));
    EXPECT_FALSE(index.Tracks("a"));
    EXPECT_TRUE(index.TracksBelow("a"));
    EXPECT_TRUE(index.TracksBelow("a-b"));
    EXPECT_FALSE(index.TracksBelow("a-"));
}

// What is before the damage counts, and nothing that is not there.
TEST(GitIndex, EndsWhereAFileIsDamaged)
{
    if (!GitRepository::IsPossible())
        GTEST_SKIP() << "git is not installed";
    for (const char* version : {"2", "4"}) {
        const GitRepository repository;
        for (const char* path : {"directory/a.c", "directory/b.c", "e.c"})
            repository.Write(path, "");
        repository.Git({"add", "."});
        repository.Git({"update-index", "--index-version", version});
        const std::string whole = Content(repository.Top() + "/.git/index");
        const TempDirectory directory;
        ASSERT_EQ(Read(directory, whole).Size(), 3u) << version;
        for (size_t length = 0; length < whole.size(); ++length)
            EXPECT_LE(Read(directory, whole.substr(0, length)).Size(), 3u) << version << ", " << length;
        for (size_t at = 0; at < whole.size(); ++at)
            for (const char byte : {'\0', '\x7f', '\xff'}) {
                std::string damaged = whole;
                damaged[at] = byte;
                EXPECT_LE(Read(directory, damaged).Size(), 3u) << version << ", " << at;
            }
    }
}

} // namespace symbols
