#include "tags/Tags.h"

#include "tests/generate/GenerateTest.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/EntryRef.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

using Commands = Requests::Commands;

class UpdateTags : public GenerateTest {
protected:
    // A tags file of one tag, whose source is so small and so new that the file is stale, or older than it.
    BEntry TagsFile(const std::string& directory, bool stale)
    {
        const std::string source = home.Write(directory + "/a.h", "tiny");
        const std::string tags = home.Write(directory + "/tags", TagLine("it", "a.h", 1, 'p'));
        const auto time = std::filesystem::last_write_time(source);
        std::filesystem::last_write_time(tags, time + (stale ? -std::chrono::hours(1) : std::chrono::hours(1)));
        return BEntry(tags.c_str());
    }
    // Looks the symbol up in both files and has them updated.
    std::vector<Commands> Update(const BEntry& local, const BEntry& system)
    {
        Tags tags(&local, &system, "it", true);
        if (tags.Rewind()) {
            std::string name, qualifier;
            char kind;
            EntryRef file;
            int line;
            bool isSystem;
            while (tags.NextMatch(name, qualifier, kind, file, line, isSystem, false, TagFile::ExactMatch())) {
            }
        }
        tags.UpdateIfNeeded(&host);
        return requests.Take();
    }
};

TEST_F(UpdateTags, LeavesFreshFilesAlone)
{
    EXPECT_THAT(Update(TagsFile("local", false), TagsFile("system", false)), ElementsAre());
}

TEST_F(UpdateTags, RebuildsAStaleLocalFileInPlace)
{
    EXPECT_THAT(Update(TagsFile("local", true), TagsFile("system", false)), ElementsAre(LocalRequest(home / "local")));
}

TEST_F(UpdateTags, ReportsTheStaleFileAndTheNewerSource)
{
    Update(TagsFile("local", true), TagsFile("system", false));
    EXPECT_FALSE(requests.Last().IsAskedFor());
    EXPECT_EQ(requests.Last().outdated, home / "local/tags");
    EXPECT_EQ(requests.Last().newer, home / "local/a.h");
    Update(TagsFile("local", false), TagsFile("system", true));
    EXPECT_EQ(requests.Last().outdated, home / "system/tags");
    EXPECT_EQ(requests.Last().newer, home / "system/a.h");
}

TEST_F(UpdateTags, RebuildsAStaleSystemFile)
{
    EXPECT_THAT(Update(TagsFile("local", false), TagsFile("system", true)), ElementsAre(SystemRequest()));
    EXPECT_THAT(Update(TagsFile("local", true), TagsFile("system", true)),
                ElementsAre(LocalRequest(home / "local"), SystemRequest()));
}

TEST_F(UpdateTags, AddsTheCompilersHeadersOnlyForUsrInclude)
{
    settings.Set("DeclScanSystemDirectories", "/System/Library/Frameworks");
    EXPECT_THAT(Update(TagsFile("local", false), TagsFile("system", true)), ElementsAre(testing::SizeIs(2)));
    settings.Set("DeclScanSystemDirectories", "/opt/usr/include-old");
    EXPECT_THAT(Update(TagsFile("local", false), TagsFile("system", true)), ElementsAre(testing::SizeIs(3)));
}

// Where the clock is set back, the new file is older than the source as well.
TEST_F(UpdateTags, ASourceFromTheFutureRebuildsTheFileOncePerLookup)
{
    const BEntry tags = TagsFile("local", true);
    const std::string source = home / "local/a.h";
    const auto future = std::filesystem::file_time_type::clock::now() + std::chrono::hours(1000);
    for (int lookup = 0; lookup < 3; ++lookup) {
        std::filesystem::last_write_time(source, future);
        EXPECT_THAT(Update(tags, BEntry()), ElementsAre(LocalRequest(home / "local"))) << lookup;
        home.Write("local/tags", TagLine("it", "a.h", 1, 'p'));
    }
    home.Write("local/a.h", "int it(void);");
    std::filesystem::last_write_time(source, future);
    EXPECT_THAT(Update(tags, BEntry()), ElementsAre()) << "what is worked on is newer than its tags as a rule";
}

TEST_F(UpdateTags, LeavesFilesFromTheFutureAlone)
{
    const BEntry tags = TagsFile("local", true);
    const auto future = std::filesystem::file_time_type::clock::now() + std::chrono::hours(1000);
    std::filesystem::last_write_time(home / "local/tags", future);
    EXPECT_THAT(Update(tags, BEntry()), ElementsAre());
}

TEST_F(UpdateTags, FollowsALinkToTheLocalFile)
{
    TagsFile("real", true);
    std::filesystem::create_directory(home / "links");
    std::filesystem::create_symlink(home / "real/tags", home / "links/tags");
    home.Write("links/a.h", "tiny"); // the source is looked for beside the link
    EXPECT_THAT(Update(BEntry((home / "links/tags").c_str()), BEntry()), ElementsAre(LocalRequest(home / "real")));
}

TEST_F(UpdateTags, DoesNothingWithoutFiles)
{
    EXPECT_THAT(Update(BEntry(), BEntry()), ElementsAre());
}

} // namespace
