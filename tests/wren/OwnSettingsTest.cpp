// The editor's own settings in the file of the plug-in's.
#include "tests/wren/HostFixture.h"
#include "wren/core/Documents.h"
#include "wren/core/Preferences.h"

#include <gmock/gmock.h>

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
namespace Event = wren::Event;

namespace {

class OwnSettings : public HostFixture {
protected:
    // Starts on a file with these lines, with a plug-in that has one setting.
    void StartWith(const std::string& lines, bool registers = true, bool sets = true)
    {
        file = home.Write("settings", lines);
        answer = [this, registers](long event, PluginInterface* record) {
            if (event == Event::kRegister && registers)
                record->RegisterSetting("DeclOne");
            if (event == Event::kSaveSettings)
                record->WriteSettings("DeclOne %s\n", plugins.c_str());
            if (event != Event::kSettingsCommand)
                return 0L;
            const char* const* words = *record->settingsArgs;
            toPlugin.push_back(words[0]);
            return words[1] != nullptr && words[1] != std::string("odd") ? 1L : 0L;
        };
        MakeHost(file);
        if (sets)
            host->SetOwnSettings(&preferences);
        host->Start();
    }
    std::string Saved()
    {
        std::string error;
        EXPECT_TRUE(host->SaveSettings(&error)) << error;
        return wren::ReadWholeFile(file, &error).value_or(error);
    }

    wren::Preferences preferences;
    std::string file;
    std::vector<std::string> toPlugin;
    std::string plugins = "new"; // the value of its setting
};

} // namespace

TEST_F(OwnSettings, GoToTheirOwnerAndNotToThePlugin)
{
    StartWith("WrenFontSize 14\nDeclOne old\n");
    EXPECT_EQ(preferences.Values().fontSize, 14);
    EXPECT_THAT(toPlugin, ElementsAre("DeclOne"));
    EXPECT_THAT(face.warnings, IsEmpty());
}

TEST_F(OwnSettings, LinesThatThePluginRefusesAreReported)
{
    StartWith("DeclOne odd\nDeclOne\nDeclOne new\n");
    EXPECT_THAT(face.warnings, ElementsAre(StartsWith(file + ":1: DeclOne cannot be \"odd\"; the line is left out"),
                                           StartsWith(file + ":2: DeclOne has no value; the line is left out")));
    EXPECT_EQ(Saved(), "DeclOne odd\nDeclOne\nDeclOne new\n") << "nobody has chosen another one";
}

TEST_F(OwnSettings, AreStoredBesideThePluginsAndUnknownLines)
{
    StartWith("WrenFontSize 14\nTheirs  1\nDeclOne old\n\n");
    wren::PreferenceValues chosen = preferences.Values();
    chosen.tabWidth = 8;
    preferences.Set(chosen);
    EXPECT_EQ(Saved(), "Theirs  1\n\nDeclOne new\nWrenFontSize 14\nWrenTabWidth 8\n");
}

TEST_F(OwnSettings, DamagedLinesAreReportedAndKept)
{
    StartWith("WrenFontSize 14\n\nWrenTabWidth wide\nWrenFontSize 15\n");
    EXPECT_THAT(face.warnings,
                ElementsAre(AllOf(StartsWith(file + ":3: WrenTabWidth: \"wide\" is no number from 1 to 16"),
                                  HasSubstr("correct or remove it")),
                            AllOf(StartsWith(file + ":4: WrenFontSize: an earlier line has set it"),
                                  HasSubstr("correct or remove it"))));
    EXPECT_EQ(preferences.Values().fontSize, 14);
    EXPECT_EQ(preferences.Values().tabWidth, 4);
    EXPECT_EQ(Saved(), "\nDeclOne new\nWrenFontSize 14\nWrenFontSize 15\nWrenTabWidth wide\n");
}

TEST_F(OwnSettings, LinesWithUnknownNamesAreReportedAndKept)
{
    StartWith("Fnord  1\nWrenFond x\n");
    EXPECT_THAT(face.warnings, ElementsAre(StartsWith(file + ":1: no setting is named \"Fnord\""),
                                           StartsWith(file + ":2: no setting is named \"WrenFond\"")));
    EXPECT_THAT(toPlugin, ElementsAre("Fnord", "WrenFond")) << "as without settings of the editor's own";
    EXPECT_EQ(Saved(), "Fnord  1\nWrenFond x\nDeclOne new\n");
}

TEST_F(OwnSettings, APluginWithoutSettingsGetsNoReportsOfItsLines)
{
    StartWith("DeclOne old\nWrenFond x\n", false);
    EXPECT_THAT(face.warnings, ElementsAre(StartsWith(file + ":2: ")));
}

TEST_F(OwnSettings, GoToThePluginWhenTheyHaveNoOwner)
{
    StartWith("WrenFontSize x\nFnord\nDeclOne old\n", true, false);
    EXPECT_THAT(face.warnings, IsEmpty());
    EXPECT_THAT(toPlugin, ElementsAre("WrenFontSize", "Fnord", "DeclOne"));
    EXPECT_EQ(Saved(), "WrenFontSize x\nFnord\nDeclOne new\n");
}

TEST_F(OwnSettings, AreSavedInANewDirectory)
{
    file = home / ".config/wren/settings";
    MakeHost(file);
    host->SetOwnSettings(&preferences);
    host->Start();
    wren::PreferenceValues chosen;
    chosen.tabWidth = 8;
    preferences.Set(chosen);
    EXPECT_EQ(Saved(), "WrenTabWidth 8\n");
}

TEST_F(OwnSettings, KeepValuesThatAnotherEditorStored)
{
    StartWith("WrenFontSize 14\nDeclOne new\n");
    const std::string others = "WrenFontSize 20\nDeclOne other\nWrenWrapLines on\n";
    home.Write("settings", others);
    EXPECT_EQ(Saved(), others);
    wren::PreferenceValues chosen = preferences.Values();
    chosen.tabWidth = 8;
    preferences.Set(chosen);
    EXPECT_EQ(Saved(), others + "WrenTabWidth 8\n");
    plugins = "newer";
    EXPECT_EQ(Saved(), "WrenFontSize 20\nWrenWrapLines on\nDeclOne newer\nWrenTabWidth 8\n");
}

TEST_F(OwnSettings, AreComparedAtTheStartWithoutASave)
{
    StartWith("WrenFontSize 14\n");
    for (const auto& entry : log.Take())
        EXPECT_NE(entry[0], "WriteSettings");
}
