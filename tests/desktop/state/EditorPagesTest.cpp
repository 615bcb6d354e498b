#include "wren/desktop/state/EditorPages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::HasSubstr;
using wren::PreferenceValues;
using Modifier = PreferenceValues::Modifier;

namespace {

using Keys = std::vector<std::pair<std::string, std::string>>;

class EditorPages : public ::testing::Test {
protected:
    template <typename T>
    T* Part(const char* name)
    {
        return page.findChild<T*>(name);
    }
    QKeySequenceEdit* Field(const char* title, int number)
    {
        auto* table = page.findChild<QTableWidget*>();
        for (int row = 0; row < table->rowCount(); ++row)
            if (table->item(row, 0)->text() == title)
                return qobject_cast<QKeySequenceEdit*>(table->cellWidget(row, 1 + number));
        return nullptr;
    }
    std::string Conflicts() { return Part<QLabel>("conflicts")->text().toStdString(); }

    wren::EditorPages page;
    QSignalSpy changed{&page, &wren::EditorPages::Changed};
};

PreferenceValues NothingAsByDefault()
{
    PreferenceValues values;
    values.font = "A font that nobody has";
    values.fontSize = 20;
    values.tabWidth = 8;
    values.indentsWithTabs = values.wrapsLines = values.showsBlanks = values.showsGuides = true;
    values.showsScopes = false;
    values.followsConfig = false;
    values.colours = PreferenceValues::Colours::Dark;
    values.restoresSession = false;
    values.command = Modifier::Control;
    values.control = Modifier::Alt;
    values.option = Modifier::Super;
    values.lookupClick = PreferenceValues::LookupClick::Control;
    values.jumpsByMeaning = false;
    values.completion = PreferenceValues::Completion::Editor;
    values.keys = {{"DeclarationLookup", "F1"},
                   {"DeclarationLookup", "F2"},
                   {"DeclarationLookup", "Shift+Ctrl+F3"},
                   {"Own", "Ctrl+,"}};
    values.menuKeys = {{"File.Close", {"F8"}}, {"Gone.Item", {"F9"}}};
    return values;
}

const wren::MenuItem kClose = {
    "File.Close", "File: Close", {QKeySequence("Ctrl+W"), QKeySequence("F20"), QKeySequence("Ctrl+F4")}};
const wren::MenuItem kCut = {"Edit.Cut", "Edit: Cut", {QKeySequence("Ctrl+X"), QKeySequence("Shift+Del")}};

} // namespace

TEST_F(EditorPages, ShowsTheDefaultsAtFirst)
{
    EXPECT_EQ(page.Values(), PreferenceValues());
}

TEST_F(EditorPages, ReturnsItsValuesAndReportsNoChange)
{
    page.SetValues(NothingAsByDefault());
    EXPECT_EQ(page.Values(), NothingAsByDefault());
    page.SetCommands({"Registered"});
    EXPECT_EQ(page.Values(), NothingAsByDefault());
    page.SetValues({});
    EXPECT_EQ(page.Values(), PreferenceValues());
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(EditorPages, ReportsChangesByTheUser)
{
    Part<QSpinBox>("fontSize")->stepUp();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(page.Values().fontSize, 12);
    QTest::keyClick(Part<QComboBox>("colours"), Qt::Key_Down);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(page.Values().colours, PreferenceValues::Colours::Light);
    int switches = 0;
    for (QCheckBox* box : page.findChildren<QCheckBox*>()) {
        box->click();
        ++switches;
    }
    EXPECT_EQ(changed.count(), 2 + switches);
    const PreferenceValues values = page.Values();
    EXPECT_TRUE(values.indentsWithTabs && values.wrapsLines && values.showsBlanks && values.showsGuides &&
                !values.restoresSession);
}

TEST_F(EditorPages, SwapsModifiersSoThatNoTwoAreTheSame)
{
    QTest::keyClick(Part<QComboBox>("option"), Qt::Key_Up); // from Alt to Control
    EXPECT_EQ(page.Values().option, Modifier::Control);
    EXPECT_EQ(page.Values().control, Modifier::Alt);
    EXPECT_EQ(page.Values().command, Modifier::Super);
    EXPECT_EQ(changed.count(), 1);
    QTest::keyClick(Part<QComboBox>("command"), Qt::Key_Up); // from Super to Alt
    EXPECT_EQ(page.Values().command, Modifier::Alt);
    EXPECT_EQ(page.Values().control, Modifier::Super);
    EXPECT_EQ(page.Values().option, Modifier::Control);
}

TEST_F(EditorPages, TakesATypedKey)
{
    page.show();
    QKeySequenceEdit* field = Field("Look up declaration", 1);
    QTest::keyClick(field, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(page.Values().keys.at(3), (std::pair<std::string, std::string>("DeclarationLookup", "Shift+F3")));
    QTest::keyClick(field, Qt::Key_F4, Qt::ControlModifier);
    EXPECT_EQ(page.Values().keys.at(3).second, "Ctrl+F4") << "another stroke takes the place of the first";
    field->findChild<QToolButton*>()->click();
    EXPECT_EQ(page.Values(), PreferenceValues()) << "the button in the field clears it";
    EXPECT_EQ(changed.count(), 3);
}

TEST_F(EditorPages, KeepsAKeyWhileAModifierAloneIsHeld)
{
    page.show();
    QTest::keyClick(Field("Go back", 0), Qt::Key_Control, Qt::ControlModifier);
    EXPECT_EQ(page.Values(), PreferenceValues());
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(EditorPages, RefusesAKeyThatCannotBeStored)
{
    page.show();
    QTest::keyClick(Field("Go back", 0), Qt::Key_VolumeDown);
    EXPECT_EQ(page.Values(), PreferenceValues());
    EXPECT_EQ(Field("Go back", 0)->keySequence(), QKeySequence("Alt+Left"));
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(EditorPages, ShowsWhichCommandsHaveTheSameKey)
{
    EXPECT_EQ(Conflicts(), "");
    PreferenceValues values;
    values.keys.emplace_back("GoBack", "Shift+Ctrl+X");
    values.keys.emplace_back("Own", "Ctrl+Shift+X");
    page.SetValues(values);
    EXPECT_THAT(Conflicts(), HasSubstr("Ctrl+Shift+X is the key of several commands: Go back, Own."))
        << "in any notation";
    Field("Own", 0)->clear();
    EXPECT_EQ(Conflicts(), "");
}

TEST_F(EditorPages, RefusesAKeyThatTypingNeedsAndSaysWhy)
{
    page.show();
    for (const Qt::KeyboardModifier held : {Qt::NoModifier, Qt::ShiftModifier}) {
        QTest::keyClick(Field("Go back", 0), Qt::Key_G, held);
        EXPECT_THAT(Conflicts(), HasSubstr("G is for editing"));
    }
    QTest::keyClick(Field("Go back", 0), Qt::Key_Space);
    EXPECT_THAT(Conflicts(), HasSubstr("Space is for editing"));
    EXPECT_EQ(page.Values(), PreferenceValues());
    EXPECT_EQ(Field("Go back", 0)->keySequence(), QKeySequence("Alt+Left"));
    EXPECT_EQ(changed.count(), 0);
    QTest::keyClick(Field("Go back", 0), Qt::Key_G, Qt::AltModifier);
    EXPECT_EQ(page.Values().keys.at(4).second, "Alt+G");
    EXPECT_EQ(Conflicts(), "");
}

TEST_F(EditorPages, ShowsKeysThatHideMenuShortcuts)
{
    page.SetMenuItems({{"Search.Find", "Search: Find", {QKeySequence("Ctrl+F")}}, kClose});
    EXPECT_EQ(Conflicts(), "");
    page.show();
    QTest::keyClick(Field("Look up definition", 1), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(Conflicts(),
              "Ctrl+F is the menu key of \u201cSearch: Find\u201d, and now runs Look up definition instead.");
    Field("Look up definition", 1)->clear();
    EXPECT_EQ(Conflicts(), "");
}

TEST_F(EditorPages, GivesF12ToThePluginAndBack)
{
    PreferenceValues values;
    values.understandsNames = true;
    values.keys = wren::DefaultKeys(true);
    values.keys.emplace_back("Mine", "F2");
    page.SetValues(values);
    QCheckBox* box = nullptr;
    for (QCheckBox* each : page.findChildren<QCheckBox*>())
        if (each->text().contains("F12"))
            box = each;
    ASSERT_NE(box, nullptr);
    box->click();
    EXPECT_EQ(changed.count(), 1);
    Keys expected = wren::DefaultKeys();
    expected.emplace_back("Mine", "F2");
    EXPECT_EQ(page.Values().keys, expected);
    box->click();
    EXPECT_EQ(page.Values(), values);
    page.SetValues({});
    EXPECT_TRUE(box->isHidden()) << "the plug-in alone has the keys";
}

TEST_F(EditorPages, ResetsTheKeys)
{
    PreferenceValues values;
    values.keys = {{"GoBack", "F1"}};
    values.tabWidth = 8;
    page.SetValues(values);
    Part<QPushButton>("reset")->click();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(page.Values().keys, wren::DefaultKeys());
    EXPECT_EQ(page.Values().tabWidth, 8);
}

TEST_F(EditorPages, OffersTheCommandsThatAreRegistered)
{
    EXPECT_EQ(Field("OtherCommand", 0), nullptr);
    page.SetCommands({"SymbolCompletion", "OtherCommand"});
    ASSERT_NE(Field("OtherCommand", 0), nullptr);
    page.show();
    QTest::keyClick(Field("OtherCommand", 0), Qt::Key_F5);
    EXPECT_EQ(page.Values().keys.back(), (std::pair<std::string, std::string>("OtherCommand", "F5")));
}

TEST_F(EditorPages, ShowsTheKeysOfMenuItems)
{
    page.SetMenuItems({kClose, kCut});
    EXPECT_EQ(Field("File: Close", 0)->keySequence(), QKeySequence("Ctrl+W"));
    EXPECT_EQ(Field("Edit: Cut", 1)->keySequence(), QKeySequence("Shift+Del"));
    EXPECT_EQ(page.Values(), PreferenceValues()) << "they are the usual ones";
    PreferenceValues values;
    values.menuKeys = {{"Edit.Cut", {}}, {"File.Close", {"F8"}}};
    page.SetValues(values);
    EXPECT_EQ(Field("File: Close", 0)->keySequence(), QKeySequence("F8"));
    EXPECT_TRUE(Field("File: Close", 1)->keySequence().isEmpty());
    EXPECT_TRUE(Field("Edit: Cut", 0)->keySequence().isEmpty());
    EXPECT_EQ(page.Values(), values);
}

TEST_F(EditorPages, TakesTheKeyOfAMenuItem)
{
    page.SetMenuItems({kClose, kCut});
    page.show();
    QTest::keyClick(Field("File: Close", 0), Qt::Key_F8);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(page.Values().menuKeys, (wren::ItemKeys{{"File.Close", {"F8", "Ctrl+F4"}}}));
    QTest::keyClick(Field("File: Close", 0), Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(page.Values(), PreferenceValues()) << "it has its usual keys again";
}

TEST_F(EditorPages, KeepsTheKeysOfMenuItemsThatAreNotThere)
{
    PreferenceValues values;
    values.menuKeys = {{"Go.References", {"F8"}}};
    page.SetValues(values);
    page.SetMenuItems({kClose});
    EXPECT_EQ(page.Values(), values);
}

TEST_F(EditorPages, KeepsATypedKeyWhenTheSameMenuItemsCome)
{
    page.SetMenuItems({kClose});
    page.show();
    QKeySequenceEdit* field = Field("File: Close", 0);
    QTest::keyClick(field, Qt::Key_F8);
    page.SetMenuItems({kClose});
    EXPECT_EQ(Field("File: Close", 0), field) << "the user is in it";
    page.SetMenuItems({kCut, kClose});
    EXPECT_EQ(Field("File: Close", 0)->keySequence(), QKeySequence("F8"));
}

TEST_F(EditorPages, RefusesForMenuItemsWhatTypingNeedsButTheKeyThatCuts)
{
    page.SetMenuItems({kClose, kCut});
    page.show();
    QTest::keyClick(Field("File: Close", 0), Qt::Key_G);
    EXPECT_THAT(Conflicts(), HasSubstr("G is for editing"));
    EXPECT_EQ(page.Values(), PreferenceValues());
    Field("Edit: Cut", 1)->clear();
    QTest::keyClick(Field("Edit: Cut", 0), Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_EQ(page.Values().menuKeys, (wren::ItemKeys{{"Edit.Cut", {"Shift+Del"}}}));
    QTest::keyClick(Field("Go back", 0), Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_THAT(Conflicts(), HasSubstr("Shift+Del is for editing"));
}

TEST_F(EditorPages, ShowsWhichMenuItemsHaveTheSameKey)
{
    page.SetMenuItems({kClose, kCut});
    page.show();
    EXPECT_EQ(Conflicts(), "");
    QTest::keyClick(Field("Edit: Cut", 1), Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(Conflicts(), "Ctrl+W is the key of several menu items: Edit: Cut, File: Close. The first one is chosen.");
    QTest::keyClick(Field("Go back", 1), Qt::Key_W, Qt::ControlModifier);
    EXPECT_THAT(Conflicts(), HasSubstr("menu key of \u201cEdit: Cut\u201d, and now runs Go back instead."));
    EXPECT_THAT(Conflicts(), HasSubstr("menu key of \u201cFile: Close\u201d, and now runs Go back instead."));
}

TEST_F(EditorPages, ResetsTheKeysOfMenuItems)
{
    page.SetMenuItems({kClose});
    PreferenceValues values;
    values.menuKeys = {{"File.Close", {"F8"}}};
    page.SetValues(values);
    Part<QPushButton>("reset")->click();
    EXPECT_EQ(page.Values(), PreferenceValues());
    EXPECT_EQ(Field("File: Close", 0)->keySequence(), QKeySequence("Ctrl+W"));
}
