#include "tags/Tags.h"

#include "settings/DeclarationSettings.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Seats.h"
#include "tests/support/TagLines.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/EntryRef.h"

#include <gtest/gtest.h>

namespace {

using Calls = std::vector<std::string>;

class UpdateTags : public testing::Test {
protected:
    UpdateTags() { Seats::Reset(); }
    ~UpdateTags() override { ScanIn("/System/Library/Frameworks", "/usr/include"); }

    TempHome home;
    FakeHost host;

    // A tags file of one tag, whose source is so small and so new that the file is stale, or older than it.
    BEntry TagsFile(const std::string& directory, bool stale)
    {
        const std::string source = home.Write(directory + "/a.h", "tiny");
        const std::string tags = home.Write(directory + "/tags", TagLine("it", "a.h", 1, 'p'));
        const auto time = std::filesystem::last_write_time(source);
        std::filesystem::last_write_time(tags, time + (stale ? -std::chrono::hours(1) : std::chrono::hours(1)));
        return BEntry(tags.c_str());
    }
    static void ScanIn(const char* first, const char* second)
    {
        const char* words[] = {"DeclScanSystemDirectories", first, second, nullptr};
        const char** line = words;
        DeclarationSettings::Instance()->HandleSettingsCommand(nullptr, &line);
    }
    // Looks the symbol up in both files and has them updated.
    Calls Update(const BEntry& local, const BEntry& system)
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
        return std::exchange(Seats::calls, {});
    }
};

TEST_F(UpdateTags, LeavesFreshFilesAlone)
{
    EXPECT_EQ(Update(TagsFile("local", false), TagsFile("system", false)), Calls{});
}

TEST_F(UpdateTags, MakesAStaleLocalFileAnewWhereItIs)
{
    EXPECT_EQ(Update(TagsFile("local", true), TagsFile("system", false)),
              Calls{"CreateTags in " + (home / "local") + ": local, none"});
}

TEST_F(UpdateTags, GivesTheLocalDirectoryForTheSystemFileAsWell)
{
    const std::string in = "CreateTags in " + (home / "local");
    EXPECT_EQ(Update(TagsFile("local", false), TagsFile("system", true)), Calls{in + ": system, compiler"});
    EXPECT_EQ(Update(TagsFile("local", true), TagsFile("system", true)),
              (Calls{in + ": local, none", in + ": system, compiler"}));
}

TEST_F(UpdateTags, AddsTheCompilersHeadersOnlyToThoseUnderUsrInclude)
{
    const std::string in = "CreateTags in " + (home / "local");
    ScanIn("/System/Library/Frameworks", nullptr);
    EXPECT_EQ(Update(TagsFile("local", false), TagsFile("system", true)), Calls{in + ": system, none"});
    ScanIn("/opt/usr/include-old", nullptr);
    EXPECT_EQ(Update(TagsFile("local", false), TagsFile("system", true)), Calls{in + ": system, compiler"});
}

TEST_F(UpdateTags, FollowsALinkToTheLocalFile)
{
    TagsFile("real", true);
    std::filesystem::create_directory(home / "links");
    std::filesystem::create_symlink(home / "real/tags", home / "links/tags");
    home.Write("links/a.h", "tiny"); // the source is looked for beside the link
    EXPECT_EQ(Update(BEntry((home / "links/tags").c_str()), BEntry()),
              Calls{"CreateTags in " + (home / "real") + ": local, none"});
}

TEST_F(UpdateTags, DoesNothingWithoutFiles)
{
    EXPECT_EQ(Update(BEntry(), BEntry()), Calls{});
}

} // namespace
