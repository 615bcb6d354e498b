// The host's own first values of a plug-in's settings.
#include "tests/wren/HostFixture.h"
#include "wren/core/Documents.h"

#include <gtest/gtest.h>

namespace Event = wren::Event;

namespace {

// A plug-in with one setting, whose default is "its own". Like the real one, it writes only other values.
class FirstSettings : public HostFixture {
protected:
    void StartWith(const std::string& lines)
    {
        file = home.Write("settings", lines);
        answer = [this](long event, PluginInterface* record) { return Answer(event, record); };
        MakeHost(file);
        host->SetFirstSettings({"DeclOne ours", "DeclUnknown ours"});
        host->Start();
    }

    std::string Saved()
    {
        std::string error;
        EXPECT_TRUE(host->SaveSettings(&error)) << error;
        return wren::ReadWholeFile(file, &error).value_or(error);
    }

    std::string value = kDefault;
    std::string file;

private:
    static constexpr const char* kDefault = "its own";

    long Answer(long event, PluginInterface* record)
    {
        const char* const* words = event == Event::kSettingsCommand ? *record->settingsArgs : nullptr;
        if (event == Event::kRegister)
            record->RegisterSetting("DeclOne");
        if (event == Event::kSaveSettings && value != kDefault)
            record->WriteSettings("DeclOne %s\n", value.c_str());
        if (event == Event::kQuerySetting && record->name == std::string("DeclOne"))
            record->ReturnSettingNameValue(value.c_str());
        if (words != nullptr && words[0] == std::string("DeclOne") && words[1] != nullptr)
            value = words[1];
        return words != nullptr && words[1] != nullptr ? 1 : 0;
    }
};

} // namespace

TEST_F(FirstSettings, ApplyWithoutAStoredLineAndAreNotStored)
{
    StartWith("");
    EXPECT_EQ(value, "ours");
    EXPECT_EQ(Saved(), "");
}

TEST_F(FirstSettings, GiveWayToAStoredLine)
{
    StartWith("DeclOne stored\n");
    EXPECT_EQ(value, "stored");
    EXPECT_EQ(Saved(), "DeclOne stored\n");
}

TEST_F(FirstSettings, AStoredLineThatThePluginRefusesLeavesThem)
{
    StartWith("DeclOne\n");
    EXPECT_EQ(value, "ours");
    EXPECT_EQ(Saved(), "DeclOne\n") << "for the user to correct";
}

TEST_F(FirstSettings, AChoiceOfThePluginsDefaultIsStored)
{
    StartWith("");
    value = "its own";
    EXPECT_EQ(Saved(), "DeclOne its own\n");
}

TEST_F(FirstSettings, AChoiceOfTheFirstValueRemovesTheStoredLine)
{
    StartWith("DeclOne stored\n");
    value = "ours";
    EXPECT_EQ(Saved(), "");
}

TEST_F(FirstSettings, AreNotUsedWithoutBeingGiven)
{
    MakeHost(home.Write("settings", ""));
    host->Start();
    EXPECT_EQ(value, "its own");
}
