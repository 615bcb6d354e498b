#include "generate/CreateTags.h"

#include "generate/TagTemplates.h"
#include "tests/generate/GenerateTest.h"
#include "vetch/storage/BEntry.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

using Commands = Requests::Commands;

class CreateTagsTest : public GenerateTest {};

TEST_F(CreateTagsTest, MakesLocalTagsInATemporaryFileAndMovesIt)
{
    CreateTags(&host, BEntry("/src"), kGenerateLocalCtags, nullptr);
    EXPECT_THAT(requests.Take(),
                ElementsAre(Commands{LocalCommand("/src", "/src/tags.tmp"), "mv /src/tags.tmp /src/tags"}));
}

TEST_F(CreateTagsTest, EscapesBothPathsOfTheMove)
{
    CreateTags(&host, BEntry("/it's $(a) b"), kGenerateLocalCtags, nullptr);
    EXPECT_THAT(requests.Take(), ElementsAre(LocalRequest("/it\\'s\\ \\$\\(a\\)\\ b")));
}

TEST_F(CreateTagsTest, AppendsTheCompilersHeadersToTheSystemTags)
{
    CreateTags(&host, BEntry("/src"), kGenerateSystemCtags, kIncludeSpecificCompiler);
    EXPECT_THAT(requests.Take(),
                ElementsAre(Commands{SystemCommand("~/Library/Caches/SystemHeaderTags.temp"),
                                     CompilerCommand("~/Library/Caches/SystemHeaderTags.temp"),
                                     "mv ~/Library/Caches/SystemHeaderTags.temp ~/Library/Caches/SystemHeaderTags"}));
}

TEST_F(CreateTagsTest, LeavesOutASecondCommandThatIsEmpty)
{
    CreateTags(&host, BEntry("/src"), kGenerateLocalCtags, "");
    EXPECT_THAT(requests.Take(), ElementsAre(LocalRequest("/src")));
}

TEST_F(CreateTagsTest, StartsEachRequestOnItsOwnThread)
{
    const std::string source = home / "src";
    CreateTags(&host, true, false);
    EXPECT_THAT(requests.Take(), ElementsAre(SystemRequest()));
    CreateTags(&host, false, true);
    EXPECT_THAT(requests.Take(), ElementsAre(LocalRequest(source)));
    CreateTags(&host, true, true);
    EXPECT_THAT(requests.Take(), ElementsAre(SystemRequest(), LocalRequest(source)));
    CreateTags(&host, false, false);
    EXPECT_THAT(requests.Take(), ElementsAre());
}

TEST_F(CreateTagsTest, RunsTwoCommandsForASystemWithoutUsrInclude)
{
    settings.Set("DeclScanSystemDirectories", "/System/Library/Frameworks");
    CreateTags(&host, true, false);
    const std::vector<Commands> made = requests.Take();
    ASSERT_EQ(made.size(), 1u);
    ASSERT_EQ(made[0].size(), 2u);
    EXPECT_EQ(made[0][0], "\n# Execute the following line to generate tags for the system headers:\n"
                          "find /System/Library/Frameworks " +
                              kWildcards + "  | " + BundlesProgram() + " -I " + kIgnoreStringsDefault +
                              " --c-kinds=+p --excmd=number -f ~/Library/Caches/SystemHeaderTags.temp -L - ");
    EXPECT_EQ(made[0][1], SystemRequest()[2]);
}

TEST_F(CreateTagsTest, GivesTwoRequestsForADirectoryTheSameTemporaryFile)
{
    CreateTags(&host, BEntry("/src"), kGenerateLocalCtags, nullptr);
    CreateTags(&host, BEntry("/src"), kGenerateLocalCtags, nullptr);
    EXPECT_THAT(requests.Take(), ElementsAre(LocalRequest("/src"), LocalRequest("/src")));
}

TEST_F(CreateTagsTest, LooksForTheInstalledProgramOncePerRequest)
{
    program.Is({true});
    CreateTags(&host, true, true);
    const std::vector<Commands> made = requests.Take();
    ASSERT_EQ(made.size(), 2u);
    for (const Commands& commands : made)
        EXPECT_THAT(commands[0], testing::HasSubstr("| cplustags -")) << commands[0];
    EXPECT_THAT(made[0][1], testing::HasSubstr("| cplustags -"));
    EXPECT_EQ(program.looks, 2);
    program.Is({false, true});
    CreateTags(&host, false, true);
    EXPECT_THAT(requests.Take(), ElementsAre(LocalRequest(home / "src")));
}

TEST_F(CreateTagsTest, UsesTheTargetOfADocumentsLinkedDirectory)
{
    std::filesystem::create_symlink(home / "src/a.cpp", home / "link.cpp");
    host.file = EntryRef((home / "link.cpp").c_str());
    CreateTags(&host, false, true);
    EXPECT_THAT(requests.Take(), ElementsAre(LocalRequest(home / "src")));
}

TEST_F(CreateTagsTest, UsesTheWorksheetsDirectoryForTheWorksheet)
{
    host.worksheet = true;
    host.worksheetDirectory = "/worksheets";
    CreateTags(&host, false, true);
    EXPECT_THAT(requests.Take(), ElementsAre(LocalRequest("/worksheets")));
}

// Whatever directory an empty reference is in. Few users may write there, so the commands say that they failed.
TEST_F(CreateTagsTest, DoesNotAskWhetherADocumentHasAFile)
{
    host.file = EntryRef();
    CreateTags(&host, false, true);
    EXPECT_THAT(requests.Take(), ElementsAre(Commands{LocalCommand("", "/tags.tmp"), "mv /tags.tmp /tags"}));
}

// Nobody hears of the end: neither the user nor the caches, which find out by the file's date.
TEST_F(CreateTagsTest, NotifiesNobody)
{
    CreateTags(&host, true, true);
    requests.Take();
    framework.Settle();
    EXPECT_THAT(host.log, ElementsAre());
    EXPECT_TRUE(framework.Windows().empty());
    EXPECT_EQ(framework.display.Beeps(), 0);
    EXPECT_TRUE(framework.application->others.empty());
    EXPECT_TRUE(framework.application->opened.empty());
}

TEST_F(CreateTagsTest, CopiesItsInputBeforeItReturns)
{
    {
        const std::string main =
            "main -f $(LOCAL_TAGS_DESTINATION)"; // gone, and settings changed, before the command runs
        const BEntry directory("/src");
        CreateTags(&host, directory, main.c_str(), nullptr);
    }
    settings.Set("DeclIndexSuffixes", "*.changed");
    EXPECT_THAT(requests.Take(), ElementsAre(Commands{"main -f /src/tags.tmp", "mv /src/tags.tmp /src/tags"}));
}

} // namespace
