#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/core/Host.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/PluginButton.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

namespace {

class Starting : public EditorStory {
protected:
    static std::vector<std::string> LinesOf(const std::string& text)
    {
        std::vector<std::string> lines;
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);)
            lines.push_back(line);
        return lines;
    }
};

constexpr const char* kDamaged = "WrenFontSize large\n"
                                 "WrenTabWidth 8\n"
                                 "WrenNoSuchThing 1\n"
                                 "WrenShowBlanks maybe\n"
                                 "DeclOptionClickToFindDeclaration off\n"
                                 "Somebody else's line\n"
                                 "DeclAutoComplete On\n"
                                 "WrenWrapLines on\n";

} // namespace

TEST_F(Starting, EditsTextsAndReportsAMissingPlugIn)
{
    const std::string file = home.Write("a.c", "int a;\n");
    bundle = home / "nowhere";
    Start({file});
    EXPECT_THAT(Notice(), AllOf(HasSubstr("Symbols cannot be looked up or completed"), HasSubstr(home / "nowhere")));
    EXPECT_FALSE(TheEditor().Window().Button().isEnabled());
    Type("new ");
    Press("F12");
    Press("Ctrl+.");
    ClickText(5, Qt::AltModifier);
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "new int a;\n");
    EXPECT_TRUE(Quit());
}

TEST_F(Starting, ReportsAPlugInThatCannotBeLoaded)
{
    bundle = home / "Declaration.bundle";
    home.Write("Declaration.bundle/Contents/Linux/Declaration", "no library");
    Start();
    EXPECT_THAT(Notice(), HasSubstr("is not a library that can be loaded"));
    Type("int a;");
    EXPECT_EQ(Text(), "int a;");
}

TEST_F(Starting, KeepsTheSettingsOfAMissingPlugIn)
{
    home.Write(".config/wren/settings", "DeclOptionClickToFindDeclaration off\nWrenTabWidth 8\n");
    bundle = home / "nowhere";
    Start();
    ASSERT_TRUE(Quit());
    EXPECT_THAT(LinesOf(Content(SettingsFile())),
                UnorderedElementsAre("DeclOptionClickToFindDeclaration off", "WrenTabWidth 8"));
}

TEST_F(Starting, ReportsEachDamagedSettingsLineOnceAndUsesTheOthers)
{
    home.Write(".config/wren/settings", kDamaged);
    Start();
    const std::vector<std::string> told = LinesOf(Notice());
    const std::string file = SettingsFile();
    EXPECT_THAT(told, ElementsAre(AllOf(HasSubstr(file + ":1:"), HasSubstr("large")),
                                  AllOf(HasSubstr(file + ":3:"), HasSubstr("WrenNoSuchThing")),
                                  AllOf(HasSubstr(file + ":4:"), HasSubstr("maybe")),
                                  AllOf(HasSubstr(file + ":6:"), HasSubstr("Somebody")),
                                  AllOf(HasSubstr(file + ":7:"), HasSubstr("DeclAutoComplete cannot be \"On\""))));
    EXPECT_EQ(TheEditor().Actions().preferences.Values().tabWidth, 8);
    EXPECT_TRUE(TheEditor().Actions().preferences.Values().wrapsLines);
    EXPECT_EQ(TheEditor().Actions().preferences.Values().fontSize, wren::PreferenceValues().fontSize);
}

TEST_F(Starting, KeepsDamagedSettingsLinesWhenStoring)
{
    home.Write(".config/wren/settings", kDamaged);
    Start();
    ASSERT_TRUE(Quit());
    const std::vector<std::string> stored = LinesOf(Content(SettingsFile()));
    for (const std::string& line : LinesOf(kDamaged))
        EXPECT_EQ(std::count(stored.begin(), stored.end(), line), 1) << line;
}

TEST_F(Starting, ReportsUnreadableSettingsAndStillQuits)
{
    fs::create_directories(SettingsFile());
    Start();
    EXPECT_THAT(Notice(), HasSubstr("cannot read the settings"));
    hands.AnswerNextAlert("OK");
    EXPECT_TRUE(Quit());
    EXPECT_THAT(hands.TakeHeard(), ElementsAre(HasSubstr(SettingsFile())));
    EXPECT_TRUE(fs::is_directory(SettingsFile()));
}

TEST_F(Starting, ReportsWhatIsNotKeptWithoutAHomeDirectory)
{
    ::unsetenv("HOME");
    Start();
    EXPECT_THAT(Notice(),
                AllOf(HasSubstr("system tags have no place"), HasSubstr("copies of unsaved texts have no place")));
    Type("int a;");
    EXPECT_EQ(Text(), "int a;");
}
