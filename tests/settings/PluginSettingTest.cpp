#include "settings/PluginSetting.h"

#include "settings/PluginSettings.h"
#include "tests/settings/NoticeLog.h"
#include "tests/support/FakeHost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A stored line as the host hands it on: its words, and null.
struct Line {
    explicit Line(std::vector<const char*> lineWords) : words(std::move(lineWords)) { words.push_back(nullptr); }
    const char** Words() { return words.data(); }
    std::vector<const char*> words;
};

struct SwitchCase {
    const char* why;
    bool before;
    std::vector<const char*> words;
    bool taken;
    bool after;
    size_t notices;
};
const SwitchCase kSwitchCases[] = {
    {"switched on", false, {"S", "on"}, true, true, 1},
    {"switched off", true, {"S", "off"}, true, false, 1},
    {"on already", true, {"S", "on"}, true, true, 0},
    {"off already", false, {"S", "off"}, true, false, 0},
    {"capitals", false, {"S", "On"}, false, false, 0},
    {"all capitals", true, {"S", "OFF"}, false, true, 0},
    {"a digit", false, {"S", "1"}, false, false, 0},
    {"another word", false, {"S", "true"}, false, false, 0},
    {"more than the word", false, {"S", "only"}, false, false, 0},
    {"an empty word", true, {"S", ""}, false, true, 0},
    {"no value", true, {"S"}, false, true, 0},
    {"further words are ignored", false, {"S", "on", "off"}, true, true, 1},
};

TEST(BoolSetting, TakesOnAndOffFromAStoredLine)
{
    for (const SwitchCase& c : kSwitchCases) {
        PluginSetting<bool> setting("S", c.before);
        NoticeLog log(setting, kSettingChanged);
        EXPECT_EQ(setting.HandleSettingsCommand(Line(c.words).Words()), c.taken) << c.why;
        EXPECT_EQ(setting.Value(), c.after) << c.why;
        EXPECT_EQ(log.heard.size(), c.notices) << c.why;
        EXPECT_EQ(log.carriedMessages, 0) << c.why;
    }
}

TEST(BoolSetting, HasATextForm)
{
    PluginSetting<bool> setting("S", true);
    EXPECT_EQ(setting.ReturnSettingValue(), "on");
    EXPECT_EQ(setting.StringValue(), "on");
    EXPECT_TRUE(setting.SetToStringValue("off"));
    EXPECT_EQ(setting.ReturnSettingValue(), "off");
    EXPECT_EQ(setting.StringValue(), "off");
    EXPECT_FALSE(setting.SetToStringValue("Off "));
}

TEST(BoolSetting, KnowsItsDefault)
{
    PluginSetting<bool> setting("S", true);
    EXPECT_TRUE(setting.MatchesDefault());
    setting.SetValue(false);
    EXPECT_FALSE(setting.MatchesDefault());
    setting.SetValue(true);
    EXPECT_TRUE(setting.MatchesDefault());
}

TEST(BoolSetting, ReportsRealChangesOnly)
{
    PluginSetting<bool> setting("S", true);
    NoticeLog log(setting, FourCC("valC"));
    setting.SetValue(true);
    EXPECT_THAT(log.heard, IsEmpty());
    setting.SetValue(false);
    EXPECT_THAT(log.heard, ElementsAre(FourCC("valC")));
}

struct TextCase {
    const char* why;
    std::vector<const char*> words;
    bool taken;
    const char* after;
    size_t notices;
};
const TextCase kTextCases[] = {
    {"one word", {"S", "new"}, true, "new", 1},
    {"words are joined by single blanks", {"S", "a", "b", "c"}, true, "a b c", 1},
    {"the text it has", {"S", "old", "text"}, true, "old text", 0},
    {"backslashes are left alone", {"S", "a\\", "b"}, true, "a\\ b", 1},
    {"quotes are left alone", {"S", "\"a", "b\""}, true, "\"a b\"", 1},
    {"an empty word", {"S", ""}, true, "", 1},
    {"no value is not an empty one", {"S"}, false, "old text", 0},
};

TEST(TextSetting, TakesTheWordsOfAStoredLine)
{
    for (const TextCase& c : kTextCases) {
        PluginSetting<const char*> setting("S", "old text");
        NoticeLog log(setting, kSettingChanged);
        EXPECT_EQ(setting.HandleSettingsCommand(Line(c.words).Words()), c.taken) << c.why;
        EXPECT_STREQ(setting.Value(), c.after) << c.why;
        EXPECT_EQ(log.heard.size(), c.notices) << c.why;
        EXPECT_EQ(log.carriedMessages, 0) << c.why;
    }
}

TEST(TextSetting, IsItsOwnTextForm)
{
    PluginSetting<const char*> setting("S", "");
    EXPECT_TRUE(setting.SetToStringValue("  two  blanks "));
    EXPECT_EQ(setting.ReturnSettingValue(), "  two  blanks ");
    EXPECT_EQ(setting.StringValue(), "  two  blanks ");
}

TEST(TextSetting, ComparesTexts)
{
    const std::string one = "text", other = "text";
    PluginSetting<const char*> setting("S", one.c_str());
    NoticeLog log(setting, kSettingChanged);
    setting.SetValue(other.c_str());
    EXPECT_THAT(log.heard, IsEmpty());
    EXPECT_TRUE(setting.MatchesDefault());
    setting.SetValue("Text");
    EXPECT_THAT(log.heard, ElementsAre(FourCC("valC")));
    EXPECT_FALSE(setting.MatchesDefault());
}

TEST(TextSetting, CanBeSetToItsOwnValue)
{
    PluginSetting<const char*> setting("S", "a longer text that does not fit into the string object");
    setting.SetValue(setting.Value() + 2);
    EXPECT_STREQ(setting.Value(), "longer text that does not fit into the string object");
}

// StringValue() is one way to the text form and ReturnSettingValue() the one that a class replaces.
template <class T>
class Replaced : public PluginSetting<T> {
public:
    explicit Replaced(T value) : PluginSetting<T>("S", value) {}
    std::string ReturnSettingValue() const override { return "replaced"; }
};

TEST(Setting, HasOneTextForm)
{
    EXPECT_EQ(Replaced<bool>(true).StringValue(), "replaced");
    EXPECT_EQ(Replaced<const char*>("text").StringValue(), "replaced");
}

TEST(Setting, MayDieWhileItIsWatched)
{
    auto setting = std::make_unique<PluginSetting<bool>>("S", true);
    NoticeLog log(*setting, kSettingChanged);
    setting->SetValue(false);
    setting.reset();
    EXPECT_EQ(log.heard.size(), 1u);
}

TEST(Setting, ForgetsWatchersThatDie)
{
    PluginSetting<bool> setting("S", true);
    {
        NoticeLog dead(setting, kSettingChanged);
    }
    NoticeLog log(setting, kSettingChanged);
    setting.SetValue(false);
    EXPECT_EQ(log.heard.size(), 1u);
}

class Settings : public PluginSettings {
public:
    Settings() { settings = {&second, &first, &text}; }

    PluginSetting<bool> first{"First", true};
    PluginSetting<bool> second{"Second", false};
    PluginSetting<const char*> text{"Text", "a b"};
};

bool Handle(Settings& settings, FakeHost& host, std::vector<const char*> words)
{
    Line line(std::move(words));
    const char** arguments = line.Words();
    return settings.HandleSettingsCommand(&host, &arguments);
}

TEST(PluginSettings, RegisterInOrder)
{
    FakeHost host;
    Settings().Register(&host);
    EXPECT_THAT(host.log, ElementsAre("RegisterSetting Second", "RegisterSetting First", "RegisterSetting Text"));
}

TEST(PluginSettings, ApplyALineToTheSettingItNames)
{
    FakeHost host;
    Settings settings;
    EXPECT_TRUE(Handle(settings, host, {"First", "off"}));
    EXPECT_FALSE(settings.first.Value());
    EXPECT_FALSE(settings.second.Value());
    EXPECT_TRUE(Handle(settings, host, {"Text", "c"}));
    EXPECT_STREQ(settings.text.Value(), "c");
}

TEST(PluginSettings, RefuseUnknownNamesAndMalformedValues)
{
    FakeHost host;
    Settings settings;
    EXPECT_FALSE(Handle(settings, host, {"Third", "on"}));
    EXPECT_FALSE(Handle(settings, host, {"first", "off"})) << "names are exact";
    EXPECT_FALSE(Handle(settings, host, {"Firs", "off"}));
    EXPECT_FALSE(Handle(settings, host, {"", "off"}));
    EXPECT_FALSE(Handle(settings, host, {"First", "no"}));
    EXPECT_FALSE(Handle(settings, host, {"First"}));
    EXPECT_TRUE(settings.first.Value());
}

TEST(PluginSettings, SaveOnlyChangedValues)
{
    FakeHost host;
    Settings settings;
    settings.Save(&host);
    EXPECT_THAT(host.log, IsEmpty()) << "defaults are not written: a later version may change them";

    settings.text.SetValue("100% %s  c");
    settings.second.SetValue(true);
    settings.first.SetValue(false);
    settings.first.SetValue(true);
    settings.Save(&host);
    EXPECT_THAT(host.log, ElementsAre("WriteSettings Second on\n", "WriteSettings Text 100% %s  c\n"));
}

TEST(PluginSettings, AnEmptyTextIsLostInTheHostsFile)
{
    FakeHost host;
    Settings settings;
    settings.text.SetValue("");
    settings.Save(&host);
    EXPECT_THAT(host.log, ElementsAre("WriteSettings Text \n"));

    Settings later;
    EXPECT_FALSE(Handle(later, host, {"Text"})) << "all that the host can make of the line";
    EXPECT_STREQ(later.text.Value(), "a b");
}

TEST(PluginSettings, ReturnTheValueOfASetting)
{
    FakeHost host;
    Settings settings;
    std::string value = "untouched";
    EXPECT_FALSE(settings.ReturnSettingValue(&host, "Third", value));
    EXPECT_EQ(value, "untouched");
    EXPECT_TRUE(settings.ReturnSettingValue(&host, "Second", value));
    EXPECT_EQ(value, "off");
    EXPECT_TRUE(settings.ReturnSettingValue(&host, "Text", value));
    EXPECT_EQ(value, "a b");
}

TEST(PluginSettings, DoNotOwnTheirSettings)
{
    PluginSetting<bool> outliving("Outliving", true);
    {
        class Borrowing : public PluginSettings {
        public:
            explicit Borrowing(PluginSettingBase* setting) { settings = {setting}; }
        } borrowing(&outliving);
    }
    outliving.SetValue(false);
    EXPECT_EQ(outliving.ReturnSettingValue(), "off");
}

} // namespace
