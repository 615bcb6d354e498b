#include "settings/BundleIdentifier.h"
#include "settings/DeclarationSettings.h"
#include "settings/ScanDirectoriesBinder.h"
#include "tests/settings/DefaultSettings.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Framework.h"
#include "tests/support/TestBundle.h"
#include "vetch/interface/BCheckBox.h"
#include "vetch/interface/BTextControl.h"
#include "vetch/interface/BWindow.h"
#include "vetch/interface/InterfaceFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Kind = vetch::ViewDescription::Kind;
using Control = vetch::HeadlessDisplay::ControlState;

enum : long { kRebuild = 10, kDeclaration = 11, kDefinition = 13, kComplete = 14 };
enum : long { kDirectories = 20, kIgnore = 21, kSuffixes = 23 };

// The host's preference window with the plug-in's panel in it: built from the interface file that is shipped, shown,
// and served by the document thread.
class Panel {
public:
    explicit Panel(Framework& framework) : framework(framework)
    {
        window = new BWindow({100, 100, 600, 600}, "Preferences", B_BORDERED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0,
                             vetch::Service::Application);
        view = vetch::MakeViewFromNib(&bundle.bundle, "DeclarationDialogs", kBundleIdentifier);
        window->AddChild(view);
        FakeHost host;
        host.panelView = view;
        host.panelIdentifier = kBundleIdentifier;
        DeclarationSettings::Instance()->AddPreferencePanel(&host);
        window->Show();
        framework.Settle();
        number = framework.Windows().back().number;
    }
    ~Panel() { Close(); }

    void Close()
    {
        if (window != nullptr)
            window->Quit();
        window = nullptr;
        framework.Settle();
    }
    void Check(long item, bool on)
    {
        ASSERT_TRUE(framework.display.Check(number, item, on)) << item;
        framework.Settle();
    }
    void Enter(long item, const std::string& text)
    {
        ASSERT_TRUE(framework.display.Enter(number, item, text)) << item;
        framework.Settle();
    }
    std::vector<Control> Controls() const
    {
        for (const auto& shown : framework.Windows())
            if (shown.number == number)
                return shown.controls;
        return {};
    }
    Control At(long item) const
    {
        for (const Control& control : Controls())
            if (control.item == item)
                return control;
        ADD_FAILURE() << "no control " << item;
        return {};
    }

    BView* Field(long item) const
    {
        for (const auto& child : view->Children())
            if (child->Item() == item)
                return child.get();
        return nullptr;
    }

private:
    Framework& framework;
    TestBundle bundle;
    BWindow* window;
    BView* view;
    long number;
};

class PreferencePanel : public testing::Test {
protected:
    Framework framework;
    DefaultSettings defaults;
    DeclarationSettings* settings = DeclarationSettings::Instance();
};

TEST_F(PreferencePanel, ShowsTheSettings)
{
    DefaultSettings::Set("DeclAutoComplete", "off");
    const Panel panel(framework);
    std::vector<long> items;
    for (const Control& control : panel.Controls())
        items.push_back(control.item);
    EXPECT_THAT(items,
                testing::ElementsAre(kRebuild, kDeclaration, kDefinition, kComplete, kDirectories, kIgnore, kSuffixes));
    EXPECT_TRUE(panel.At(kRebuild).on);
    EXPECT_TRUE(panel.At(kDeclaration).on);
    EXPECT_TRUE(panel.At(kDefinition).on);
    EXPECT_FALSE(panel.At(kComplete).on) << "the settings, and not what the interface file has checked";
    EXPECT_EQ(panel.At(kDirectories).text, "/System/Library/Frameworks\n/usr/include");
    EXPECT_EQ(panel.At(kIgnore).text, kIgnoreStringsDefault);
    EXPECT_EQ(panel.At(kSuffixes).text, "*.h *.c *.cp *.cpp *.m *.mm");
}

TEST_F(PreferencePanel, SwitchesTheSettings)
{
    const struct {
        long item;
        bool (DeclarationSettings::*setting)() const;
    } kBoxes[] = {
        {kRebuild, &DeclarationSettings::AutoRebuild},
        {kDeclaration, &DeclarationSettings::OptionClickToFindDecl},
        {kDefinition, &DeclarationSettings::CtrlOptionClickToFindDef},
        {kComplete, &DeclarationSettings::AutoComplete},
    };
    Panel panel(framework);
    for (const auto& box : kBoxes) {
        panel.Check(box.item, false);
        for (const auto& other : kBoxes)
            EXPECT_EQ((settings->*other.setting)(), &other != &box) << box.item << " and " << other.item;
        panel.Check(box.item, true);
        EXPECT_TRUE((settings->*box.setting)()) << box.item;
    }
}

TEST_F(PreferencePanel, SetsTheTexts)
{
    Panel panel(framework);
    panel.Enter(kIgnore, "ONE,TWO  THREE");
    EXPECT_STREQ(settings->IgnoreStrings(), "ONE,TWO  THREE");
    panel.Enter(kSuffixes, "*.hpp");
    EXPECT_STREQ(settings->IndexSuffixes(), "*.hpp");
    panel.Enter(kSuffixes, "");
    EXPECT_STREQ(settings->IndexSuffixes(), "");
    EXPECT_STREQ(settings->ScanSystemDirectories(), kScanSystemDirectoriesDefault);
    EXPECT_STREQ(settings->LocalTagSubdirs(), kLocalTagSubdirectoriesDefault);
}

struct DirectoriesCase {
    const char* why;
    const char* entered;
    const char* stored;
    const char* shown;
};
const DirectoriesCase kDirectoriesCases[] = {
    {"a colon between two", "/a:/b", "/a /b", "/a\n/b"},
    {"a comma", "/a,/b", "/a /b", "/a\n/b"},
    {"a line break", "/a\n/b", "/a /b", "/a\n/b"},
    {"a blank", "/a /b", "/a /b", "/a\n/b"},
    {"a protected blank", "/My\\ Headers\n/b", "/My\\ Headers /b", "/My\\ Headers\n/b"},
    {"letters beyond ASCII", "/\xC3\xBC", "/  ", "/\n\n"},
    {"none", "", "", ""},
};

TEST_F(PreferencePanel, StoresDirectoriesAndShowsOnePerLine)
{
    Panel panel(framework);
    for (const DirectoriesCase& c : kDirectoriesCases) {
        panel.Enter(kDirectories, c.entered);
        EXPECT_STREQ(settings->ScanSystemDirectories(), c.stored) << c.why;
        EXPECT_EQ(panel.At(kDirectories).text, c.shown) << c.why;
    }
}

TEST_F(PreferencePanel, KeepsTheUsersSelectionWhenDirectoriesAreNormalised)
{
    Panel panel(framework);
    BMessage entered(vetch::kTextEntered);
    entered.AddString("text", "/usr/include:/opt");
    entered.AddInt32("start", 5);
    entered.AddInt32("end", 14);
    panel.Field(kDirectories)->MessageReceived(&entered);
    const Control field = panel.At(kDirectories);
    EXPECT_EQ(field.text, "/usr/include\n/opt");
    EXPECT_EQ(field.selectionStart, 5) << "though the change of the setting refreshed the field";
    EXPECT_EQ(field.selectionEnd, 14);
}

TEST_F(PreferencePanel, FollowsTheSettings)
{
    const Panel panel(framework);
    DefaultSettings::Set("DeclAutomaticallyRebuild", "off");
    DefaultSettings::Set("DeclIndexSuffixes", "*.inc");
    DefaultSettings::Set("DeclScanSystemDirectories", "/c /d");
    EXPECT_FALSE(panel.At(kRebuild).on);
    EXPECT_EQ(panel.At(kSuffixes).text, "*.inc");
    EXPECT_EQ(panel.At(kDirectories).text, "/c\n/d");
}

TEST_F(PreferencePanel, MayBeBuiltTwice)
{
    Panel one(framework);
    Panel other(framework);
    one.Check(kComplete, false);
    EXPECT_FALSE(other.At(kComplete).on) << "both watch the one setting";
    other.Enter(kDirectories, "/a,/b");
    EXPECT_EQ(one.At(kDirectories).text, "/a\n/b");
}

TEST_F(PreferencePanel, StopsWatchingWhenItCloses)
{
    Panel one(framework);
    one.Close();
    EXPECT_TRUE(DefaultSettings::Set("DeclAutoComplete", "off")) << "no dead control is told";
    EXPECT_TRUE(DefaultSettings::Set("DeclScanSystemDirectories", "/a"));
    const Panel again(framework);
    EXPECT_FALSE(again.At(kComplete).on);
    EXPECT_EQ(again.At(kDirectories).text, "/a");
}

TEST_F(PreferencePanel, IsHarmlessWithoutControlsInTheFile)
{
    BView empty({0, 0, 100, 100}, "empty", 0, 0);
    FakeHost host;
    host.panelView = &empty;
    settings->AddPreferencePanel(&host);
    EXPECT_TRUE(DefaultSettings::Set("DeclAutoComplete", "off")) << "its controls are there, and nowhere to be seen";
}

TEST(Bind, ConnectsAnyControlWithAnySetting)
{
    PluginSetting<bool> setting("S", true);
    PluginSetting<const char*> text("T", "old");
    BCheckBox box;
    BTextControl field;
    Bind(&setting, &box);
    Bind(&text, &field);
    EXPECT_TRUE(box.Value());
    EXPECT_STREQ(field.Text(), "old");
    setting.SetValue(false);
    text.SetValue("new");
    EXPECT_FALSE(box.Value());
    EXPECT_STREQ(field.Text(), "new");
}

TEST(Bind, LeavesAControlAloneWhenItsSettingDies)
{
    BCheckBox box;
    BTextControl field;
    {
        PluginSetting<bool> setting("S", true);
        PluginSetting<const char*> text("T", "last");
        Bind(&setting, &box);
        Bind(&text, &field);
    }
    EXPECT_TRUE(box.Value());
    EXPECT_STREQ(field.Text(), "last");
}

TEST(ScanDirectories, AreNormalisedEvenWhenTheSettingIsUnchanged)
{
    const DefaultSettings defaults;
    DefaultSettings::Set("DeclScanSystemDirectories", "/a /b");
    BTextControl field;
    field.SetText("/a:/b");
    ScanDirectoriesBinder(DeclarationSettings::Instance()).Invoke(&field);
    EXPECT_STREQ(field.Text(), "/a\n/b");
}

} // namespace
