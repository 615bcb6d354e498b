#include "tags/TagDiscovery.h"

#include "tests/support/FakeHost.h"
#include "tests/support/Framework.h"
#include "tests/support/Seats.h"
#include "tests/support/TagLines.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/BPath.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

struct AlertWitness : vetch::DisplayWitness {
    std::vector<vetch::AlertDescription> alerts;
    std::function<void()> meanwhile = [] {}; // what happens while the user is asked

    void AlertAnswered(const vetch::AlertDescription& alert, long) override
    {
        alerts.push_back(alert);
        meanwhile();
    }
};

class FindOrCreateTagsTest : public testing::Test {
protected:
    FindOrCreateTagsTest()
    {
        Seats::Reset();
        host.file = EntryRef(home.Write("src/a.cpp", "").c_str());
    }

    AlertWitness witness;
    TempHome home;
    Framework framework{&witness};
    FakeHost host;
    BEntry local;
    BEntry system;

    bool FindOrCreate()
    {
        const vetch::PluginCall call;
        return FindOrCreateTags(&host, local, system);
    }
};

TEST_F(FindOrCreateTagsTest, AsksWhenThereAreNoTagsAtAll)
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

struct Answer {
    const char* why;
    long button;
    std::vector<std::string> calls;
};

const Answer kAnswers[] = {
    {"cancelled", 0, {}},
    {"tags are generated in the background: not there yet", 1, {"CreateTags system local"}},
    {"the user is to run the commands: not there yet", 2, {"HelpCreateTags system local"}},
};

TEST_F(FindOrCreateTagsTest, FindsNoTagsWhateverTheAnswer)
{
    for (const Answer& row : kAnswers) {
        Seats::Reset();
        framework.display.AnswerAlert(row.button);
        EXPECT_FALSE(FindOrCreate()) << row.why;
        EXPECT_EQ(Seats::calls, row.calls) << row.why;
    }
}

TEST_F(FindOrCreateTagsTest, FindsNoTagsEvenWhenSomeAppearDuringTheQuestion)
{
    witness.meanwhile = [this] { home.Write("tags", ""); };
    framework.display.AnswerAlert(1);
    EXPECT_FALSE(FindOrCreate()) << "the user gives the command again";
    EXPECT_TRUE(FindOrCreate());
}

TEST_F(FindOrCreateTagsTest, AsksNothingWhenOneOfTheFilesIsThere)
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
    EXPECT_TRUE(Seats::calls.empty());
}

} // namespace
