#include "wren/core/Preferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using wren::Preferences;
using wren::PreferenceValues;

namespace {

std::string Problem(Preferences* preferences, const std::string& line)
{
    std::string problem;
    const bool taken = preferences->Take(line, &problem);
    EXPECT_EQ(taken, problem.empty()) << line;
    return problem;
}

using Keys = std::vector<std::pair<std::string, std::string>>;

PreferenceValues NothingAsByDefault()
{
    PreferenceValues values;
    values.font = "DejaVu Sans Mono";
    values.fontSize = 72;
    values.tabWidth = 1;
    values.indentsWithTabs = values.wrapsLines = values.showsBlanks = values.showsGuides = true;
    values.showsScopes = false;
    values.followsConfig = false;
    values.colours = PreferenceValues::Colours::Dark;
    values.restoresSession = false;
    values.command = PreferenceValues::Modifier::Alt;
    values.option = PreferenceValues::Modifier::Super;
    values.lookupClick = PreferenceValues::LookupClick::Control;
    values.jumpsByMeaning = false;
    values.completion = PreferenceValues::Completion::None;
    values.keepsTags = PreferenceValues::KeepTags::Never;
    values.keys = {{"SymbolCompletion", "Ctrl+Space"}, {"DeclarationLookup", "F3"}, {"Mine", "Ctrl+,"}};
    values.menuKeys = {{"File.Close", {"F8", "Ctrl+,"}}, {"Edit.Cut", {"Shift+Del"}}, {"Edit.Undo", {}}};
    return values;
}

} // namespace

TEST(Preferences, StoreNothingByDefault)
{
    const Preferences preferences;
    EXPECT_THAT(preferences.Lines(), IsEmpty());
    EXPECT_EQ(preferences.Values(), PreferenceValues());
}

TEST(Preferences, BindTheseKeysByDefault)
{
    EXPECT_THAT(wren::DefaultKeys(), (Keys{{"SymbolCompletion", "Ctrl+."},
                                           {"SymbolCompletion", "Ctrl+Space"},
                                           {"DeclarationLookup", "F12"},
                                           {"DefinitionLookup", "Ctrl+F12"},
                                           {"GoBack", "Alt+Left"},
                                           {"GoForward", "Alt+Right"}}));
}

TEST(Preferences, LeaveF12ToMeaningsWhereNamesAreUnderstood)
{
    const struct {
        const char* why;
        bool understandsNames;
        std::vector<const char*> lines;
        const char* declaration; // the keys of the plug-in's lookups; "" for none
        const char* definition;
    } kCases[] = {
        {"the plug-in alone", false, {}, "F12", "Ctrl+F12"},
        {"names are understood", true, {}, "Alt+F12", "Alt+Shift+F12"},
        {"the user gives it back", true, {"WrenJumpByMeaning off"}, "F12", "Ctrl+F12"},
        {"a chosen key stays", true, {"WrenKeys DeclarationLookup=F12"}, "F12", "Alt+Shift+F12"},
        {"a chosen key stays when F12 is given back",
         true,
         {"WrenKeys DefinitionLookup=F3", "WrenJumpByMeaning off"},
         "F12",
         "F3"},
        {"a removed key stays away", true, {"WrenKeys DefinitionLookup="}, "Alt+F12", ""},
    };
    for (const auto& each : kCases) {
        Preferences preferences(each.understandsNames);
        std::string error;
        for (const char* line : each.lines)
            EXPECT_TRUE(preferences.Take(line, &error)) << line << error;
        const auto keyOf = [&](const std::string& command) {
            for (const auto& [name, key] : preferences.Values().keys)
                if (name == command)
                    return key;
            return std::string();
        };
        EXPECT_EQ(keyOf("DeclarationLookup"), each.declaration) << each.why;
        EXPECT_EQ(keyOf("DefinitionLookup"), each.definition) << each.why;
        EXPECT_THAT(preferences.Lines(), ::testing::UnorderedElementsAreArray(each.lines)) << each.why;
    }
}

TEST(Preferences, StoreALineForEachChangedValue)
{
    Preferences preferences;
    preferences.Set(NothingAsByDefault());
    EXPECT_THAT(preferences.Lines(),
                ElementsAre("WrenFont DejaVu Sans Mono", "WrenFontSize 72", "WrenTabWidth 1", "WrenIndentWithTabs on",
                            "WrenWrapLines on", "WrenShowBlanks on", "WrenShowGuides on", "WrenShowScopes off",
                            "WrenEditorConfig off", "WrenColours dark", "WrenRestoreSession off",
                            "WrenModifiers command=alt control=control option=super", "WrenLookupClick control",
                            "WrenJumpByMeaning off", "WrenCompletion none", "WrenKeepTags never",
                            "WrenKeys SymbolCompletion=Ctrl+Space DeclarationLookup=F3 DefinitionLookup= GoBack= "
                            "GoForward= Mine=Ctrl+%2C",
                            "WrenMenuKeys Edit.Cut=Shift+Del Edit.Undo= File.Close=F8,Ctrl+%2C"));
    std::set<std::string> names;
    for (const std::string& line : preferences.Lines())
        names.insert(line.substr(0, line.find(' ')));
    EXPECT_THAT(preferences.Names(), ::testing::UnorderedElementsAreArray(names)) << "all of them are tried here";
}

TEST(Preferences, ReadTheirStoredLines)
{
    Preferences stored;
    stored.Set(NothingAsByDefault());
    Preferences read;
    for (const std::string& line : stored.Lines())
        EXPECT_EQ(Problem(&read, line), "");
    EXPECT_EQ(read.Values(), NothingAsByDefault());
    EXPECT_EQ(read.Lines(), stored.Lines());
}

TEST(Preferences, AcceptOtherSpellings)
{
    const struct {
        const char* why;
        const char* line;
        const char* stored;
    } kCases[] = {
        {"runs of blanks", "  WrenFontSize   12  ", "WrenFontSize 12"},
        {"blanks within a font's name", "WrenFont A  B", "WrenFont A  B"},
        {"the default value", "WrenFontSize 11", nullptr},
        {"the smallest", "WrenFontSize 6", "WrenFontSize 6"},
        {"the widest", "WrenTabWidth 16", "WrenTabWidth 16"},
        {"an empty font is the desktop's", "WrenFont ", nullptr},
        {"modifiers in another order, and one left out", "WrenModifiers option=super command=alt",
         "WrenModifiers command=alt control=control option=super"},
        {"a percent sign by hand", "WrenKeys GoBack=Ctrl+%", "WrenKeys GoBack=Ctrl+%25"},
        {"a plus sign", "WrenKeys GoBack=Ctrl++,Alt++", "WrenKeys GoBack=Ctrl++,Alt++"},
        {"the equals sign by hand", "WrenKeys GoBack=Ctrl+=", "WrenKeys GoBack=Ctrl+%3D"},
        {"a character beyond ASCII", "WrenKeys GoBack=Alt+\xc3\x96", "WrenKeys GoBack=Alt+\xc3\x96"},
        {"a key twice", "WrenKeys GoBack=F1,F1", "WrenKeys GoBack=F1"},
        {"a command twice: the later", "WrenKeys GoBack=F1 GoBack=F2", "WrenKeys GoBack=F2"},
        {"a command with a blank", "WrenKeys My%20own=F1", "WrenKeys My%20own=F1"},
        {"keys that do nothing to a text", "WrenKeys GoBack=Shift+F1,Menu,Shift+Ins",
         "WrenKeys GoBack=Shift+F1,Menu,Shift+Ins"},
        {"keys of texts with others", "WrenKeys GoBack=Meta+G,Shift+Alt+Left", "WrenKeys GoBack=Meta+G,Shift+Alt+Left"},
        {"the default keys", "WrenKeys GoBack=Alt+Left", nullptr},
        {"the same keys in another order, the first being shown", "WrenKeys SymbolCompletion=Ctrl+Space,Ctrl+.",
         "WrenKeys SymbolCompletion=Ctrl+Space,Ctrl+."},
        {"menu items in another order, and one twice: the later",
         "WrenMenuKeys View.Files=F2 Edit.Undo=F3 View.Files=F4,F4", "WrenMenuKeys Edit.Undo=F3 View.Files=F4"},
        {"a menu item that no menu has", "WrenMenuKeys No.Such=F2", "WrenMenuKeys No.Such=F2"},
        {"no menu items", "WrenMenuKeys", nullptr},
    };
    for (const auto& each : kCases) {
        Preferences preferences;
        EXPECT_EQ(Problem(&preferences, each.line), "") << each.why;
        if (each.stored == nullptr)
            EXPECT_THAT(preferences.Lines(), IsEmpty()) << each.why;
        else
            EXPECT_THAT(preferences.Lines(), ElementsAre(each.stored)) << each.why;
    }
}

TEST(Preferences, ReportADamagedLineAndKeepIt)
{
    const struct {
        const char* why;
        const char* line;
        const char* problem;
    } kCases[] = {
        {"no number", "WrenFontSize large", "\"large\" is no number from 6 to 72"},
        {"no value", "WrenFontSize", "\"\" is no number"},
        {"too small", "WrenFontSize 5", "from 6 to 72"},
        {"too large", "WrenFontSize 73", "from 6 to 72"},
        {"far too large", "WrenTabWidth 99999999999999999999", "from 1 to 16"},
        {"negative", "WrenTabWidth -4", "from 1 to 16"},
        {"more than a number", "WrenTabWidth 4 columns", "\"4 columns\""},
        {"neither on nor off", "WrenWrapLines yes", "\"yes\" is none of on, off"},
        {"in capitals", "WrenShowBlanks ON", "none of on, off"},
        {"a colour", "WrenColours blue", "none of desktop, light, dark"},
        {"a click", "WrenLookupClick shift", "none of alt, control"},
        {"no role", "WrenModifiers shift=alt", "\"shift\" is none of command, control, option"},
        {"no key", "WrenModifiers command=meta", "\"meta\" is none of control, alt, super"},
        {"no equals sign", "WrenModifiers command", "\"\" is none of"},
        {"two on one key", "WrenModifiers command=alt option=alt", "the same key"},
        {"two on one key, one by default", "WrenModifiers command=alt", "the same key"},
        {"a control character", "WrenFont a\tb", "control characters"},
        {"no keys", "WrenKeys GoBack", "\"GoBack\" is not a command"},
        {"no command", "WrenKeys =F1", "is not a command"},
        {"a modifier alone", "WrenKeys GoBack=Ctrl+", "\"Ctrl+\" is no key"},
        {"a modifier twice", "WrenKeys GoBack=Ctrl+Ctrl+A", "is no key"},
        {"an unknown key", "WrenKeys GoBack=Ctrl+Any", "\"Ctrl+Any\" is no key"},
        {"an unknown modifier", "WrenKeys GoBack=Super+A", "is no key"},
        {"no key between commas", "WrenKeys GoBack=F1,,F2", "\"\" is no key"},
        {"no such function key", "WrenKeys GoBack=F36", "is no key"},
        {"broken UTF-8", "WrenKeys GoBack=\xc3", "is no key"},
        {"a letter", "WrenKeys GoBack=G", "\"G\" is for editing, and needs \"Ctrl+\", \"Alt+\" or \"Meta+\""},
        {"a letter with Shift", "WrenKeys GoBack=Shift+G", "\"Shift+G\" is for editing"},
        {"a letter beyond ASCII", "WrenKeys GoBack=\xc3\x96", "is for editing"},
        {"a plus sign alone", "WrenKeys GoBack=Ctrl++,+", "\"+\" is for editing"},
        {"the space bar", "WrenKeys GoBack=Space", "\"Space\" is for editing"},
        {"a key that moves the caret", "WrenKeys GoBack=F1,Shift+Left", "\"Shift+Left\" is for editing"},
        {"one damaged command", "WrenKeys GoForward=F1 GoBack=F0", "\"F0\" is no key"},
        {"the key that cuts, for a command", "WrenKeys GoBack=Shift+Del", "\"Shift+Del\" is for editing"},
        {"a letter for a menu item", "WrenMenuKeys File.Close=G", "\"G\" is for editing"},
        {"an unknown key for a menu item", "WrenMenuKeys Edit.Undo=F2 File.Close=Ctrl+Any", "\"Ctrl+Any\" is no key"},
        {"a menu item without keys", "WrenMenuKeys File.Close", "is not a command"},
    };
    for (const auto& each : kCases) {
        Preferences preferences;
        EXPECT_THAT(Problem(&preferences, each.line), HasSubstr(each.problem)) << each.why;
        EXPECT_EQ(preferences.Values(), PreferenceValues()) << each.why;
        EXPECT_THAT(preferences.Lines(), ElementsAre(each.line)) << each.why;
    }
}

TEST(Preferences, RejectUnknownNames)
{
    Preferences preferences;
    EXPECT_NE(Problem(&preferences, "WrenFonts x"), "");
    EXPECT_THAT(preferences.Lines(), IsEmpty());
}

TEST(Preferences, KeepADamagedLineUntilTheUserChoosesAValue)
{
    Preferences preferences;
    Problem(&preferences, "WrenFontSize large");
    Problem(&preferences, "WrenTabWidth wide");
    PreferenceValues chosen;
    chosen.tabWidth = 8;
    preferences.Set(chosen);
    EXPECT_THAT(preferences.Lines(), ElementsAre("WrenFontSize large", "WrenTabWidth 8"));
}

TEST(Preferences, UseTheFirstGoodLineOfAName)
{
    Preferences preferences;
    EXPECT_NE(Problem(&preferences, "WrenFontSize large"), "");
    EXPECT_EQ(Problem(&preferences, "WrenFontSize 12"), "");
    EXPECT_THAT(Problem(&preferences, "WrenFontSize 13"), HasSubstr("earlier line"));
    EXPECT_EQ(preferences.Values().fontSize, 12);
    EXPECT_THAT(preferences.Lines(), ElementsAre("WrenFontSize 12", "WrenFontSize large", "WrenFontSize 13"));
}

TEST(Preferences, StoreADefaultThatHidesLaterLines)
{
    Preferences preferences;
    EXPECT_EQ(Problem(&preferences, "WrenFontSize 11"), "");
    EXPECT_THAT(Problem(&preferences, "WrenFontSize 9"), HasSubstr("earlier line"));
    EXPECT_THAT(preferences.Lines(), ElementsAre("WrenFontSize 11", "WrenFontSize 9"));
}

TEST(Preferences, AcceptEveryKeyThatTheyStore)
{
    const char* const kKeys[] = {
        "Alt+A", "Ctrl+Shift+Alt+Meta+F35", "Meta+Space", "Ctrl+%", "Ctrl+,", "Alt+,", "Meta+=", "Ctrl+PgDown"};
    for (const char* key : kKeys) {
        EXPECT_TRUE(wren::IsKey(key)) << key;
        PreferenceValues values;
        values.keys.emplace_back("A command, it=50%20", key);
        Preferences stored;
        stored.Set(values);
        Preferences read;
        ASSERT_EQ(stored.Lines().size(), 1u);
        EXPECT_EQ(Problem(&read, stored.Lines().front()), "") << key;
        EXPECT_EQ(read.Values(), values) << key;
    }
}
