#include "tags/TagDiscovery.h"

#include "tests/generate/GenerateTest.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/BPath.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

class FindOrCreateTagsTest : public GenerateTest {
protected:
    BEntry local;
    BEntry system;

    bool FindOrCreate()
    {
        const vetch::PluginCall call;
        return FindOrCreateTags(&host, local, system);
    }
};

TEST_F(FindOrCreateTagsTest, AsksWhenThereAreNoTags)
{
    framework.display.AnswerAlert(0);
    EXPECT_FALSE(FindOrCreate());
    ASSERT_EQ(witness.alerts.size(), 1u);
    EXPECT_EQ(witness.alerts[0].title, "DeclarationLookup");
    EXPECT_EQ(witness.alerts[0].text,
              "There are no local or system tags files. Would you like to generate new ones? Tags will be genereated "
              "for you or a set of ctags commands will be pasted into your Worksheet.");
    EXPECT_EQ(witness.alerts[0].buttons, (std::vector<std::string>{"Cancel", "Generate tags", "Paste command"}));
}

TEST_F(FindOrCreateTagsTest, DoesNothingWhenTheUserCancels)
{
    framework.display.AnswerAlert(0);
    EXPECT_FALSE(FindOrCreate());
    EXPECT_THAT(requests.Take(), ElementsAre());
    EXPECT_THAT(host.log, ElementsAre());
}

TEST_F(FindOrCreateTagsTest, MakesBothFilesInTheBackgroundAndReturnsFalse)
{
    framework.display.AnswerAlert(1);
    EXPECT_FALSE(FindOrCreate());
    EXPECT_THAT(requests.Take(), ElementsAre(SystemRequest(), LocalRequest(home / "src")));
    EXPECT_THAT(host.log, ElementsAre());
}

TEST_F(FindOrCreateTagsTest, PastesTheCommandsForBothFilesAndReturnsFalse)
{
    program.Is({true});
    framework.display.AnswerAlert(2);
    EXPECT_FALSE(FindOrCreate());
    EXPECT_THAT(requests.Take(), ElementsAre());
    EXPECT_THAT(host.log, ElementsAre(HasSubstr("for the system headers"),
                                      HasSubstr("/usr/include/gcc/darwin/default/"), HasSubstr("in this directory")));
}

TEST_F(FindOrCreateTagsTest, ReturnsFalseEvenWhenTagsAppearDuringTheQuestion)
{
    witness.whileAsked = [this] { home.Write("tags", ""); };
    framework.display.AnswerAlert(0);
    EXPECT_FALSE(FindOrCreate()) << "the user gives the command again";
    EXPECT_TRUE(FindOrCreate());
}

TEST_F(FindOrCreateTagsTest, AsksNothingWhenOneOfTheFilesExists)
{
    const std::string tags = home.Write("tags", "");
    EXPECT_TRUE(FindOrCreate());
    EXPECT_STREQ(BPath(&local).Path(), tags.c_str());

    const std::string systemTags = home.WriteSystemTags("");
    EXPECT_TRUE(FindOrCreate());
    std::filesystem::remove(tags);
    EXPECT_TRUE(FindOrCreate());
    EXPECT_STREQ(BPath(&system).Path(), systemTags.c_str());
    EXPECT_STREQ(BPath(&local).Path(), "");
    EXPECT_TRUE(witness.alerts.empty());
    EXPECT_THAT(requests.Take(), ElementsAre());
}

} // namespace
