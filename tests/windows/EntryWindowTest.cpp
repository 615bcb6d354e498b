#include "windows/EntryWindow.h"

#include "tests/support/FakeHost.h"
#include "tests/support/Framework.h"
#include "tests/support/RefusedThreads.h"
#include "tests/support/TagLines.h"
#include "tests/support/TestBundle.h"
#include "windows/SearchWindow.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using Texts = std::vector<std::string>;

const long kSymbol = 1;
const long kLookUp = 2;
const long kCancel = 3;

class EntryWindowTest : public testing::Test {
protected:
    EntryWindowTest()
    {
        host.bundle = &bundle.bundle;
        home.Write("src/view.h", "a source of more than nine bytes");
        local.SetTo(home.Write("src/tags", TagLine("draw", "view.h", 12, 'p') + TagLine("once", "view.h", 1, 'f') +
                                               TagLine("twice", "view.h", 2, 'p') + TagLine("twice", "view.h", 3, 'f'))
                        .c_str());
    }

    TempHome home;
    TestBundle bundle;
    Framework framework;
    FakeHost host;
    BEntry local;
    BEntry system;

    EntryWindow* Open()
    {
        EntryWindow* dialog = EntryWindow::CreateOrShow(&host, &local, &system);
        framework.Settle();
        return dialog;
    }
    vetch::HeadlessDisplay::WindowState Dialog() const { return framework.Windows().at(0); }
    vetch::HeadlessDisplay::ControlState Control(long item) const
    {
        for (const auto& control : Dialog().controls)
            if (control.item == item)
                return control;
        ADD_FAILURE() << "no control " << item;
        return {};
    }
    void Enter(const std::string& symbol)
    {
        ASSERT_TRUE(framework.display.Enter(Dialog().number, kSymbol, symbol));
        framework.Settle();
    }
    void Press(long item)
    {
        ASSERT_TRUE(framework.display.Press(Dialog().number, item));
        framework.Settle();
    }
    void LookUp(const std::string& symbol)
    {
        Enter(symbol);
        Press(kLookUp);
    }
};

TEST_F(EntryWindowTest, OpensWithAFieldAndTwoButtons)
{
    EntryWindow* dialog = Open();
    EXPECT_EQ(dialog, EntryWindow::gEntryWin);
    EXPECT_TRUE(Dialog().visible);
    ASSERT_EQ(Dialog().controls.size(), 3u);
    EXPECT_EQ(Control(kSymbol).kind, vetch::ViewDescription::Kind::Text);
    EXPECT_TRUE(Control(kSymbol).focus);
    EXPECT_EQ(Control(kLookUp).kind, vetch::ViewDescription::Kind::Button);
    EXPECT_EQ(Control(kCancel).kind, vetch::ViewDescription::Kind::Button);
}

TEST_F(EntryWindowTest, ListsEvenASingleMatchAtAFixedPlace)
{
    Open();
    LookUp("draw");
    EXPECT_FALSE(Dialog().visible);
    ASSERT_EQ(framework.VisibleWindows().size(), 1u);
    const auto results = framework.VisibleWindows().at(0);
    EXPECT_EQ(results.list->items, Texts{"draw - view.h"});
    EXPECT_EQ(results.frame, (BRect{300, 216, 412, 234}));
    EXPECT_TRUE(framework.application->opened.empty());
    EXPECT_EQ(SearchWindow::gSearchWin.load() == nullptr, false);
    EXPECT_EQ(framework.display.Beeps(), 0);
}

TEST_F(EntryWindowTest, AListWithoutAThreadIsReportedAndTheDialogStays)
{
    Open();
    Complaints complaints;
    {
        const RefusedThreads refused;
        for (int time = 0; time < 2; ++time) {
            Open();
            LookUp("twice");
        }
    }
    EXPECT_EQ(complaints.Take(), Texts{NoThreadsFor("a window is not shown")});
    EXPECT_EQ(SearchWindow::gSearchWin, nullptr);
    EXPECT_EQ(framework.Windows().size(), 1u) << "the dialog";
    Open();
    LookUp("twice");
    EXPECT_EQ(framework.VisibleWindows().size(), 1u);
}

TEST_F(EntryWindowTest, ListsTagsOfEveryKind)
{
    Open();
    LookUp("twice");
    ASSERT_EQ(framework.VisibleWindows().size(), 1u);
    EXPECT_EQ(framework.VisibleWindows().at(0).list->items, (Texts{"twice - view.h", "twice - view.h"}));
}

TEST_F(EntryWindowTest, AListedMatchOpensInTheEditor)
{
    Open();
    LookUp("twice");
    ASSERT_EQ(framework.VisibleWindows().size(), 1u);
    ASSERT_TRUE(framework.display.InvokeItem(framework.VisibleWindows().at(0).number, 1));
    framework.Settle();
    EXPECT_EQ(framework.application->opened, (std::vector<RecordingApplication::Opened>{{home / "src/view.h", 3}}));
    EXPECT_TRUE(framework.VisibleWindows().empty());
}

TEST_F(EntryWindowTest, BeepsWithoutAWindowWhenNothingMatches)
{
    Open();
    long beeps = 0;
    for (const char* nothing : {"missing", ""}) {
        Open();
        LookUp(nothing);
        EXPECT_EQ(framework.display.Beeps(), ++beeps) << nothing;
        EXPECT_TRUE(framework.VisibleWindows().empty()) << nothing;
        EXPECT_EQ(framework.Windows().size(), 1u) << nothing; // the hidden dialog
        EXPECT_EQ(SearchWindow::gSearchWin, nullptr) << nothing;
    }
}

TEST_F(EntryWindowTest, ItsButtonsHideItAndItReturnsWithItsTextSelected)
{
    EntryWindow* dialog = Open();
    const long number = Dialog().number;
    for (const long button : {kCancel, kLookUp}) {
        Enter("once upon a time");
        Press(button);
        EXPECT_FALSE(Dialog().visible) << button;
        EXPECT_EQ(EntryWindow::gEntryWin, dialog) << button;

        EXPECT_EQ(Open(), dialog) << button;
        EXPECT_EQ(Dialog().number, number) << button;
        EXPECT_TRUE(Dialog().visible) << button;
        EXPECT_TRUE(Dialog().active) << button;
        EXPECT_TRUE(Control(kSymbol).focus) << button;
        EXPECT_EQ(Control(kSymbol).text, "once upon a time") << button;
        EXPECT_EQ(Control(kSymbol).selectionStart, 0) << button;
        EXPECT_EQ(Control(kSymbol).selectionEnd, 16) << button;
    }
}

TEST_F(EntryWindowTest, CancellingLooksNothingUp)
{
    Open();
    Enter("draw");
    Press(kCancel);
    EXPECT_TRUE(framework.VisibleWindows().empty());
    EXPECT_EQ(framework.display.Beeps(), 0);
}

TEST_F(EntryWindowTest, KeepsUsingTheTagsFilesOfTheFirstDocument)
{
    Open();
    home.Write("other/a.h", "a source of more than nine bytes");
    const BEntry otherTags(home.Write("other/tags", TagLine("elsewhere", "a.h", 1, 'f')).c_str());
    EntryWindow::CreateOrShow(&host, &otherTags, &system);
    framework.Settle();
    LookUp("elsewhere");
    EXPECT_EQ(framework.display.Beeps(), 1);
    EntryWindow::CreateOrShow(&host, &otherTags, &system);
    framework.Settle();
    LookUp("draw");
    EXPECT_EQ(framework.VisibleWindows().size(), 1u);
}

TEST_F(EntryWindowTest, IsNewAfterTheUserClosedIt)
{
    Open();
    const long number = Dialog().number;
    ASSERT_TRUE(framework.display.Close(number));
    framework.Settle();
    EXPECT_EQ(EntryWindow::gEntryWin, nullptr);
    EXPECT_TRUE(framework.Windows().empty());
    Open();
    EXPECT_NE(Dialog().number, number);
    EXPECT_TRUE(Dialog().visible);
}

TEST_F(EntryWindowTest, AClosingDialogIsReturnedButNotShown)
{
    EntryWindow* dialog = Open();
    {
        const vetch::PluginCall call; // it is destroyed only after the call
        dialog->PostMessage(B_QUIT_REQUESTED);
        while (dialog->Lock()) {
            dialog->Unlock();
            std::this_thread::yield();
        }
        EXPECT_EQ(EntryWindow::CreateOrShow(&host, &local, &system), dialog);
        EXPECT_TRUE(framework.VisibleWindows().empty());
    }
    framework.Settle();
    EXPECT_EQ(EntryWindow::gEntryWin, nullptr);
}

TEST_F(EntryWindowTest, OpensEmptyWithoutABundle)
{
    host.bundle = nullptr;
    Open();
    EXPECT_TRUE(Dialog().visible);
    EXPECT_TRUE(Dialog().controls.empty());
}

// The document thread closes palettes while the dialog makes them: who comes first is up to the threads, but nothing is
// left behind and nobody touches a dead window.
TEST_F(EntryWindowTest, MakesResultsWhileTheDocumentThreadClosesThem)
{
    EntryWindow* dialog = Open();
    Enter("draw");
    for (int i = 0; i < 200; ++i) {
        dialog->PostMessage(FourCC("LkUp"));
        if (SearchWindow* results = SearchWindow::gSearchWin)
            results->Quit();
        vetch::RunPending();
    }
    framework.Settle();
    framework.QuitWindows();
    EXPECT_TRUE(framework.Windows().empty());
    EXPECT_EQ(SearchWindow::gSearchWin, nullptr);
}

} // namespace
