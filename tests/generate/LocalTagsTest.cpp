// The directory panel, and updating what is there.
#include "generate/CreateTags.h"

#include "tests/generate/GenerateTest.h"
#include "vetch/app/BMessage.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

constexpr uint32 kChosen = FourCC("gnlt");

class LocalTagsTest : public GenerateTest {
protected:
    // What the panel sends, naming that directory.
    static BMessage Choice(const std::string& directory)
    {
        BMessage message(kChosen);
        const EntryRef ref(directory.c_str());
        message.AddRef("refs", &ref);
        return message;
    }
    void CreateLocal()
    {
        const vetch::PluginCall call;
        CreateLocalTags(&host);
    }
    void CreateOrUpdate()
    {
        const vetch::PluginCall call;
        CreateOrUpdateLocalTags(&host);
    }
};

TEST_F(LocalTagsTest, TheUserChoosesTheirDirectory)
{
    framework.display.AnswerPanel(home / "chosen");
    CreateLocal();
    ASSERT_EQ(witness.panels.size(), 1u);
    EXPECT_EQ(witness.panels[0].title, "Select Directory To tag");
    EXPECT_EQ(witness.panels[0].directory, home / "src");
    EXPECT_TRUE(witness.panels[0].directoriesOnly);
    EXPECT_FALSE(witness.panels[0].multiple);
    EXPECT_THAT(requests.Take(), ElementsAre()) << "the user has not answered yet";
    framework.Settle();
    EXPECT_THAT(framework.application->others, ElementsAre(kChosen)) << "the application is told";
}

TEST_F(LocalTagsTest, DismissingThePanelMakesNone)
{
    framework.display.AnswerPanel(std::nullopt);
    CreateLocal();
    framework.Settle();
    EXPECT_THAT(framework.application->others, ElementsAre());
    EXPECT_THAT(requests.Take(), ElementsAre());
}

// The panel is nobody's: a second one opens beside it, and both are gone when the application is.
TEST_F(LocalTagsTest, ASecondRequestOpensAnotherPanel)
{
    CreateLocal();
    CreateLocal();
    framework.Settle();
    EXPECT_EQ(witness.panels.size(), 2u);
    EXPECT_NE(witness.panels[0].panel, witness.panels[1].panel);
}

TEST_F(LocalTagsTest, ThePanelStartsAtTheWorksheetsDirectory)
{
    host.worksheet = true;
    host.worksheetDirectory = home.Path();
    CreateLocal();
    EXPECT_EQ(witness.panels.at(0).directory, home.Path());
}

TEST_F(LocalTagsTest, AMessageNamesTheirDirectory)
{
    const BMessage choice = Choice("/chosen by user");
    HandleCreateTagsDirectorySelected(&host, &choice);
    EXPECT_THAT(requests.Take(), ElementsAre(LocalRequest("/chosen\\ by\\ user")));

    std::filesystem::create_directory_symlink(home / "src", home / "link");
    const BMessage link = Choice(home / "link");
    HandleCreateTagsDirectorySelected(&host, &link);
    EXPECT_THAT(requests.Take(), ElementsAre(LocalRequest(home / "src"))) << "links are followed";
}

TEST_F(LocalTagsTest, AMessageWithoutADirectoryMakesNone)
{
    const BMessage empty(kChosen);
    HandleCreateTagsDirectorySelected(&host, &empty);
    BMessage text(kChosen);
    text.AddString("refs", "/src");
    HandleCreateTagsDirectorySelected(&host, &text);
    EXPECT_THAT(requests.Take(), ElementsAre());
}

TEST_F(LocalTagsTest, TheNearestTagsFileIsUpdated)
{
    const struct {
        const char* why;
        const char* tags;
        const char* directory;
    } kCases[] = {
        {"two levels up", "tags", ""},
        {"one level up is nearer", "src/tags", "/src"},
        {"beside the document", "src/deep/tags", "/src/deep"},
    };
    host.file = EntryRef(home.Write("src/deep/b.cpp", "").c_str());
    for (const auto& each : kCases) {
        home.Write(each.tags, "");
        CreateOrUpdate();
        EXPECT_THAT(requests.Take(), ElementsAre(LocalRequest(home.Path() + each.directory))) << each.why;
    }
    EXPECT_TRUE(witness.panels.empty());
}

TEST_F(LocalTagsTest, ALinkedTagsFileIsUpdatedAtTheLink)
{
    home.Write("elsewhere/tags", "");
    std::filesystem::create_symlink(home / "elsewhere/tags", home / "src/tags");
    CreateOrUpdate();
    EXPECT_THAT(requests.Take(), ElementsAre(LocalRequest(home / "src"))) << "the move takes the link's place";
}

TEST_F(LocalTagsTest, ThePanelOpensWhenThereIsNothingToUpdate)
{
    CreateOrUpdate();
    EXPECT_EQ(witness.panels.size(), 1u);
    EXPECT_EQ(witness.panels.at(0).directory, home / "src");
    EXPECT_THAT(requests.Take(), ElementsAre());
}

} // namespace
