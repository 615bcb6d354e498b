#include "tests/desktop/editorwindow/EditorStory.h"
#include "wren/core/Host.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/PluginButton.h"
#include "wren/desktop/PreferenceActions.h"
#include "wren/desktop/display/ListPeer.h"
#include "wren/desktop/display/QtDisplay.h"
#include "wren/desktop/display/WindowPeer.h"

#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;

namespace {

// Names of a project: one declared and defined, one declared twice, and two that begin alike.
constexpr const char* kTags = "!_TAG_FILE_SORTED\t1\t/0=unsorted, 1=sorted, 2=foldcase/\n"
                              "Area\tshapes.c\t2;\"\tf\n"
                              "Area\tshapes.h\t3;\"\tp\n"
                              "Many\tother.h\t1;\"\tp\n"
                              "Many\tshapes.h\t1;\"\tp\n"
                              "Paint\tshapes.h\t2;\"\tp\n"
                              "Pair\tshapes.h\t3;\"\tp\n";

class Lookup : public EditorStory {
protected:
    Lookup()
    {
        home.Write("tags", kTags);
        home.Write("shapes.h", "int Many(void);\nint Paint(void);\nint Area(void); int Pair(void);\n");
        home.Write("shapes.c", "\nint Area(void) { return 1; }\n");
        home.Write("other.h", "int Many(void);\n");
    }
    void StartWith(const std::string& text)
    {
        Start({home.Write("draw.c", text)});
        SettleBackground();
    }
    // The tab and the line, from 1, where the user is.
    std::string Place()
    {
        const wren::Document& document = *TheEditor().TheHost().Current();
        return CurrentTab() + ":" + std::to_string(document.LineAt(View().Caret()) + 1);
    }
    static const wren::WindowPeer* Matches()
    {
        for (const QWidget* widget : QApplication::topLevelWidgets())
            if (const auto* peer = dynamic_cast<const wren::WindowPeer*>(widget); peer != nullptr && peer->isVisible())
                return peer;
        return nullptr;
    }
    void ExpectCompleted(const char* keys)
    {
        StartWith("Pai");
        Press("End");
        Press(keys);
        SettleBackground();
        ASSERT_THAT(PluginWindows(), ElementsAre("completions")) << keys;
        Press(keys);
        EXPECT_EQ(Text(), "Paint") << keys << " chooses what it has listed";
        EXPECT_THAT(PluginWindows(), IsEmpty()) << keys;
    }
};

} // namespace

TEST_F(Lookup, F12GoesToTheDeclarationAndAltLeftReturns)
{
    StartWith("\n\n  Area\n");
    View().GoTo(5);
    Press("F12");
    EXPECT_EQ(Place(), "shapes.h:3");
    Press("Alt+Left");
    EXPECT_EQ(Place(), "draw.c:3");
    EXPECT_EQ(View().Caret(), 5);
    Press("Alt+Right");
    EXPECT_EQ(Place(), "shapes.h:3");
}

TEST_F(Lookup, AltLeftReturnsToTheSameTextAfterItMoved)
{
    StartWith("\n\n  Area\n");
    View().GoTo(5);
    Press("F12");
    Press("Ctrl+PgUp");
    View().GoTo(0);
    Type("xyz\n");
    Press("Ctrl+PgDown");
    Press("Alt+Left");
    EXPECT_EQ(Place(), "draw.c *:4");
    EXPECT_EQ(View().Caret(), 9);
}

TEST_F(Lookup, AltLeftReturnsToThePlaceInAReloadedFile)
{
    StartWith("\n\n  Area\n");
    View().GoTo(5);
    Press("F12");
    home.Write("draw.c", "\n\n  Area and more\n");
    ComeBack();
    Press("Alt+Left");
    EXPECT_EQ(Text(), "\n\n  Area and more\n");
    EXPECT_EQ(View().Caret(), 5);
}

TEST_F(Lookup, ControlF12GoesToTheDefinition)
{
    StartWith("Area\n");
    Press("Ctrl+F12");
    EXPECT_EQ(Place(), "shapes.c:2");
}

TEST_F(Lookup, BackAndForwardGoThroughAllPlaces)
{
    StartWith("Area\n");
    Press("F12");
    View().GoTo(20);
    Press("F12"); // on Paint, which is declared here
    EXPECT_EQ(Place(), "shapes.h:2");
    Press("Alt+Left");
    EXPECT_EQ(View().Caret(), 20);
    Press("Alt+Left");
    EXPECT_EQ(Place(), "draw.c:1");
    Press("Alt+Right");
    Press("Alt+Right");
    EXPECT_EQ(Place(), "shapes.h:2");
}

TEST_F(Lookup, AltLeftReturnsFromGoToLine)
{
    StartWith("one\ntwo\nthree\n");
    View().GoTo(1);
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->setIntValue(3);
        dialog->accept();
    });
    Choose("Go", "Go to Line\u2026");
    EXPECT_EQ(Place(), "draw.c:3");
    Choose("Go", "Back");
    EXPECT_EQ(View().Caret(), 1);
}

TEST_F(Lookup, ForwardReopensAClosedFile)
{
    StartWith("Area\n");
    Press("F12");
    Press("Alt+Left");
    CloseTab(1);
    EXPECT_THAT(Tabs(), ElementsAre("draw.c"));
    Press("Alt+Right");
    EXPECT_EQ(Place(), "shapes.h:3");
    EXPECT_THAT(Tabs(), ElementsAre("draw.c", "shapes.h"));
}

TEST_F(Lookup, SeveralMatchesAreListedAndEnterOpensOne)
{
    StartWith("Many\n");
    Press("F12");
    ASSERT_THAT(PluginWindows(), ElementsAre("Declaration"));
    Press("Down");
    Press("Return");
    EXPECT_EQ(Tabs().size(), 2u);
    EXPECT_THAT(PluginWindows(), IsEmpty());
    Press("Alt+Left");
    EXPECT_EQ(Place(), "draw.c:1");
}

TEST_F(Lookup, TheMatchesLeaveTheirLineVisible)
{
    StartWith("\n\nMany\n");
    TheEditor().Actions().preferences.UseZoom(12); // letters that reach below the place that the plug-in wants
    View().GoTo(3);
    Press("F12");
    ASSERT_THAT(PluginWindows(), ElementsAre("Declaration"));
    const wren::WindowPeer* matches = Matches();
    const QRect line = View().LineFrom(2);
    EXPECT_GT(matches->frameGeometry().top(), line.bottom());
    EXPECT_LT(matches->frameGeometry().top(), line.bottom() + 2 * line.height());
    EXPECT_EQ(matches->List()->font().pointSize(), wren::PreferenceValues().fontSize + 12) << "it zooms with the text";
}

TEST_F(Lookup, ALookupInVainIsSaidInWords)
{
    StartWith("Nowhere Many\n");
    Press("F12");
    EXPECT_EQ(Status(), "Nothing found for “Nowhere” in ~/tags");
    ClickText(9, Qt::AltModifier);
    Press("Escape");
    TheEditor().TheHost().Current()->Select(0, 4);
    Press("F12");
    EXPECT_EQ(Status(), "Nothing found for “Nowh” in ~/tags");
    home.Write("Library/Caches/SystemHeaderTags", kTags);
    ClickText(3, Qt::AltModifier);
    EXPECT_EQ(Status(), "Nothing found for “Nowhere” in ~/tags and the tags of the system") << "of the click's name";
}

TEST_F(Lookup, ASymbolOfTheDialogThatIsNotFoundIsSaidInWords)
{
    StartWith("\n");
    RunCommand("SymbolLookupDialog");
    Settle();
    auto* field = QApplication::activeWindow()->findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, "Absent");
    QTest::keyClick(field, Qt::Key_Return);
    SettleBackground();
    Settle();
    EXPECT_EQ(Status(), "Nothing found for “Absent” in ~/tags");
}

TEST_F(Lookup, EnterOpensTheFirstMatchWithoutASelection)
{
    StartWith("Many\n");
    Press("F12");
    ASSERT_THAT(PluginWindows(), ElementsAre("Declaration"));
    Press("Return");
    const std::string first = Place();
    EXPECT_THAT(PluginWindows(), IsEmpty());
    Press("Alt+Left");
    EXPECT_EQ(Text(), "Many\n") << "no line end was typed";
    Press("F12");
    Press("Down");
    Press("Return");
    EXPECT_EQ(Place(), first);
}

TEST_F(Lookup, AltClickGoesToTheDeclarationAndControlAltClickToTheDefinition)
{
    StartWith("Area\n");
    ClickText(2, Qt::AltModifier);
    EXPECT_EQ(Place(), "shapes.h:3");
    Press("Alt+Left");
    ClickText(2, Qt::AltModifier | Qt::ControlModifier);
    EXPECT_EQ(Place(), "shapes.c:2");
}

TEST_F(Lookup, PlainClicksAndTheOtherPairOfClicksLookNothingUp)
{
    StartWith("Area\n");
    for (const Qt::KeyboardModifiers held :
         {Qt::KeyboardModifiers(Qt::NoModifier), Qt::KeyboardModifiers(Qt::ShiftModifier),
          Qt::KeyboardModifiers(Qt::ControlModifier), Qt::ControlModifier | Qt::ShiftModifier}) {
        ClickText(2, held);
        EXPECT_THAT(Tabs(), ElementsAre("draw.c")) << static_cast<int>(held);
    }
}

TEST_F(Lookup, TheSecondPairOfClicksIsChosenInThePreferences)
{
    StartWith("Area\n");
    InPreferences([](QWidget& dialog) { ChooseIn(dialog, "lookupClick", "Control-click, Control-Shift-click"); });
    ClickText(2, Qt::ControlModifier);
    EXPECT_EQ(Place(), "shapes.h:3");
    Press("Alt+Left");
    ClickText(2, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Place(), "shapes.c:2");
    Press("Alt+Left");
    ClickText(2, Qt::AltModifier);
    EXPECT_EQ(CurrentTab(), "draw.c") << "Alt-click is the desktop's then";
}

TEST_F(Lookup, ThePreferencesChooseTheOptionKey)
{
    StartWith("Area\n");
    InPreferences([](QWidget& dialog) { ChooseIn(dialog, "option", "Super"); });
    ClickText(2, Qt::AltModifier);
    EXPECT_THAT(Tabs(), ElementsAre("draw.c"));
    ClickText(2, Qt::MetaModifier);
    EXPECT_EQ(Place(), "shapes.h:3");
}

TEST_F(Lookup, ControlDotCompletesAndChooses)
{
    ExpectCompleted("Ctrl+.");
}

TEST_F(Lookup, ControlSpaceCompletesAndChooses)
{
    ExpectCompleted("Ctrl+Space");
}

TEST_F(Lookup, AKeyFromTheSettingsReplacesTheDefault)
{
    home.Write(".config/wren/settings", "WrenKeys DeclarationLookup=F3\n");
    StartWith("Area\n");
    Press("F12");
    EXPECT_EQ(CurrentTab(), "draw.c");
    Press("F3");
    EXPECT_EQ(Place(), "shapes.h:3");
}

TEST_F(Lookup, TheButtonsMenuShowsTheKeys)
{
    home.Write(".config/wren/settings", "WrenKeys SymbolLookup=Alt+L DeclarationLookup=F3\n");
    StartWith("Area\n");
    hands.ChooseNext(std::nullopt);
    emit TheEditor().Window().Button().PopUpAsked();
    Settle();
    EXPECT_THAT(hands.LastMenu(),
                IsSupersetOf({"Look up symbol\tAlt+L", "Look up declaration\tF3", "Look up definition\tCtrl+F12"}));
}

TEST_F(Lookup, AKeyOfTwoCommandsRunsTheFirst)
{
    home.Write(".config/wren/settings", "WrenKeys DeclarationLookup=Alt+L DefinitionLookup=Alt+L\n");
    StartWith("Area\n");
    Press("Alt+L");
    EXPECT_EQ(Place(), "shapes.h:3");
}

TEST_F(Lookup, ABoundKeyOverridesAMenuShortcut)
{
    home.Write(".config/wren/settings", "WrenKeys DeclarationLookup=Ctrl+L\n"); // "Go to Line" had it
    StartWith("Area\n");
    Press("Ctrl+L");
    EXPECT_EQ(Place(), "shapes.h:3");
}

TEST_F(Lookup, StartsANewUndoGroup)
{
    StartWith("");
    Type("common ");
    Press("F12");
    Press("Escape");
    Type("value");
    Press("Ctrl+Z");
    EXPECT_EQ(Text(), "common ");
}

TEST_F(Lookup, ClosingATextClosesItsCompletions)
{
    StartWith("Pai");
    Press("End");
    Press("Ctrl+Space");
    SettleBackground();
    ASSERT_THAT(PluginWindows(), ElementsAre("completions"));
    CloseTab(0);
    EXPECT_THAT(PluginWindows(), IsEmpty());
    EXPECT_THAT(Tabs(), ElementsAre("untitled"));
    Type("x");
    EXPECT_EQ(Text(), "x");
}

TEST_F(Lookup, ClosingATextClosesItsMatches)
{
    StartWith("Many\n");
    Press("F12");
    ASSERT_THAT(PluginWindows(), ElementsAre("Declaration"));
    Press("Ctrl+W");
    EXPECT_THAT(PluginWindows(), IsEmpty());
    EXPECT_THAT(Tabs(), ElementsAre("untitled"));
}

TEST_F(Lookup, TheEditorEndsWithAListOpen)
{
    StartWith("Many\n");
    Press("F12");
    ASSERT_THAT(PluginWindows(), ElementsAre("Declaration"));
    EXPECT_TRUE(Quit());
    EXPECT_THAT(PluginWindows(), IsEmpty());
}

TEST_F(Lookup, TheEditorEndsWhileNamesLoad)
{
    std::string names = "!_TAG_FILE_SORTED\t1\t/0=unsorted, 1=sorted, 2=foldcase/\n";
    for (int number = 0; number < 200'000; ++number)
        names += "Name" + std::to_string(1'000'000 + number) + "\tshapes.h\t1;\"\tp\n";
    home.Write("tags", names);
    Start({home.Write("draw.c", "")});
    Type("Na");
    QTest::keySequence(&View(), QKeySequence("Ctrl+Space")); // loads them
    hands.AnswerNextAlert("Discard");
    EXPECT_TRUE(Quit());
    EXPECT_THAT(PluginWindows(), IsEmpty());
    EXPECT_EQ(Content(home / "draw.c"), "");
}
