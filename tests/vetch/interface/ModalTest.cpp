#include "Desk.h"
#include "vetch/interface/BAlert.h"
#include "vetch/interface/BFilePanel.h"
#include "vetch/interface/BMenuBar.h"
#include "vetch/interface/BPopUpMenu.h"
#include "vetch/support/BLocker.h"

namespace {

// Menus, alerts and panels, answered from the queue.
using Question = Desk;

struct AlertCase {
    const char* why;
    std::vector<const char*> buttons;
    std::vector<long> answers;
    long result;
};

TEST_F(Question, AnAlertAnswersTheIndexOfItsButton)
{
    const AlertCase cases[] = {
        {"nobody answers: the last button", {"Cancel", "Worksheet", "Generate"}, {}, 2},
        {"the first", {"Cancel", "Worksheet", "Generate"}, {0}, 0},
        {"the middle", {"Cancel", "Worksheet", "Generate"}, {1}, 1},
        {"no such button: the last", {"Cancel", "OK", nullptr}, {2}, 1},
        {"less than none: the last", {"Cancel", "OK", nullptr}, {-1}, 1},
        {"null buttons are left out", {nullptr, "OK", nullptr}, {}, 0},
        {"there is always one", {nullptr, nullptr, nullptr}, {}, 0},
    };
    for (const AlertCase& c : cases) {
        for (const long answer : c.answers)
            display.AnswerAlert(answer);
        auto* alert = new BAlert("title", "text", c.buttons[0], c.buttons[1], c.buttons[2]);
        EXPECT_EQ(alert->Go(), c.result) << c.why;
    }
}

TEST_F(Question, AnswersAreUsedInOrder)
{
    display.AnswerAlert(1);
    display.AnswerAlert(0);
    EXPECT_EQ((new BAlert("a", "", "x", "y", "z"))->Go(), 1);
    EXPECT_EQ((new BAlert("b", "", "x", "y", "z"))->Go(), 0);
    EXPECT_EQ((new BAlert("c", "", "x", "y", "z"))->Go(), 2);
    EXPECT_EQ(diary.lines, Lines({"alert a 1", "alert b 0", "alert c 2"}));
}

// Keeps what the user is shown.
class Listener : public vetch::DisplayObserver {
public:
    vetch::MenuDescription menu;
    vetch::AlertDescription alert;
    vetch::PanelDescription panel;

    void MenuAnswered(const vetch::MenuDescription& shown, std::optional<long>) override { menu = shown; }
    void AlertAnswered(const vetch::AlertDescription& shown, long) override { alert = shown; }
    void PanelOpened(const vetch::PanelDescription& shown) override { panel = shown; }
};

TEST_F(Question, AnAlertShowsItsTextAndItsButtons)
{
    Listener listener;
    vetch::HeadlessDisplay other(&listener);
    vetch::SetDisplay(&other);
    (new BAlert("Title", "Text", "Cancel", nullptr, "OK"))->Go();
    EXPECT_EQ(listener.alert.title, "Title");
    EXPECT_EQ(listener.alert.text, "Text");
    EXPECT_EQ(listener.alert.buttons, Lines({"Cancel", "OK"}));
}

class Menu : public Desk {
protected:
    Menu()
    {
        menu.AddItem(open);
        menu.AddSeparatorItem();
        menu.AddItem(closed);
        closed->SetEnabled(false);
    }

    BPopUpMenu menu{"popUp", false, false};
    BMenuItem* const open = new BMenuItem("Open", nullptr, 'o', 2);
    BMenuItem* const closed = new BMenuItem("Closed", nullptr);
};

struct MenuCase {
    const char* why;
    std::optional<long> answer;
    bool chosen;
};

TEST_F(Menu, GoReturnsTheChosenItem)
{
    const MenuCase cases[] = {
        {"an item", 0, true},
        {"dismissed", std::nullopt, false},
        {"a separator cannot be chosen", 1, false},
        {"nor a disabled item", 2, false},
        {"nor one beyond the last", 3, false},
        {"nor one before the first", -1, false},
    };
    for (const MenuCase& c : cases) {
        display.AnswerMenu(c.answer);
        EXPECT_EQ(menu.Go({10, 20}, false, false, false), c.chosen ? open : nullptr) << c.why;
    }
    EXPECT_EQ(menu.Go({10, 20}, false, false, false), nullptr) << "nobody answers: dismissed";
}

TEST_F(Menu, ShowsItsItemsWithTheirShortcuts)
{
    Listener listener;
    vetch::HeadlessDisplay other(&listener);
    vetch::SetDisplay(&other);
    BFont font(*be_plain_font);
    font.SetSize(10);
    menu.SetFont(&font);
    closed->SetShortcut(0, 0x42);
    menu.Go({10, 20}, false, false, false);
    EXPECT_EQ(listener.menu.name, "popUp");
    EXPECT_EQ(listener.menu.where, (BPoint{10, 20}));
    EXPECT_EQ(listener.menu.fontSize, 10);
    ASSERT_EQ(listener.menu.rows.size(), 3u);
    EXPECT_EQ(listener.menu.rows[0].label, "Open");
    EXPECT_EQ(listener.menu.rows[0].key, 'o');
    EXPECT_EQ(listener.menu.rows[0].modifiers, 2u);
    EXPECT_TRUE(listener.menu.rows[0].enabled);
    EXPECT_EQ(listener.menu.rows[1].label, "");
    EXPECT_FALSE(listener.menu.rows[2].enabled);
    EXPECT_EQ(listener.menu.rows[2].key, 0);
    EXPECT_EQ(listener.menu.rows[2].modifiers, 0x42u) << "kept although there is no key";
}

TEST_F(Menu, FindsItemsByLabelAndPlace)
{
    EXPECT_EQ(menu.FindItem("Open"), open);
    EXPECT_EQ(menu.FindItem("open"), nullptr);
    EXPECT_EQ(menu.FindItem(""), nullptr) << "separators have no label to find them by";
    EXPECT_EQ(menu.IndexOf(closed), 2);
    EXPECT_EQ(menu.IndexOf(nullptr), -1);
    EXPECT_EQ(menu.CountItems(), 3);
    EXPECT_EQ(menu.ItemAt(3), nullptr);
    EXPECT_EQ(menu.ItemAt(-1), nullptr);
    EXPECT_FALSE(menu.AddItem(nullptr));
}

TEST_F(Menu, InsertsBeforeAnItem)
{
    auto* first = new BMenuItem("First", nullptr);
    auto* last = new BMenuItem("Last", nullptr);
    EXPECT_TRUE(menu.AddItem(first, 0));
    EXPECT_TRUE(menu.AddItem(last, 99));
    EXPECT_EQ(menu.IndexOf(first), 0);
    EXPECT_EQ(menu.IndexOf(open), 1);
    EXPECT_EQ(menu.IndexOf(last), 4);
}

TEST_F(Menu, ABarHoldsMenus)
{
    BMenuBar bar("bar");
    auto* search = new BMenu("Search");
    auto* find = new BMenuItem("Find", new BMessage(FourCC("find")));
    find->SetStartDynamic();
    search->AddItem(find);
    bar.AddItem(new BMenuItem("Help", nullptr));
    bar.AddItem(new BMenuItem(search));
    EXPECT_EQ(bar.FindItem("Find"), nullptr) << "only its own items";
    ASSERT_NE(bar.FindItem("Search"), nullptr);
    EXPECT_EQ(bar.FindItem("Search")->Submenu(), search);
    EXPECT_EQ(bar.FindItem("Help")->Submenu(), nullptr);
    EXPECT_EQ(search->FindItem("Find")->Message()->what, FourCC("find"));
    EXPECT_TRUE(find->IsStartDynamic());
    EXPECT_FALSE(find->IsDynamic());
}

// Keeps the messages it receives.
class Receiver : public BLooper {
public:
    Receiver() : BLooper(vetch::Service::Application) { Run(); }
    void MessageReceived(BMessage* message) override { received.push_back(*message); }
    std::vector<BMessage> received;
};

class Panel : public Desk {
protected:
    void Open()
    {
        const BMessenger target(receiver);
        const EntryRef directory("/tmp/somewhere");
        auto* panel = new BFilePanel(B_OPEN_PANEL, &target, &directory, B_DIRECTORY_NODE, false, nullptr, nullptr);
        panel->Window()->SetTitle("Select");
        BMessage message(FourCC("gnlt"));
        message.AddInt32("extra", 5);
        panel->SetMessage(&message);
        message.AddInt32("late", 6);
        panel->Show();
        panel->Show();
    }
    // Whether there is nothing left but the application and the receiver.
    bool PanelIsGone() const { return vetch::Loopers().size() == 2; }

    Receiver* const receiver = new Receiver;
};

TEST_F(Panel, SendsItsMessageWithWhatWasChosen)
{
    display.AnswerPanel("/usr/include");
    Open();
    vetch::Settle();
    ASSERT_EQ(receiver->received.size(), 1u);
    const BMessage& answer = receiver->received[0];
    EXPECT_EQ(answer.what, FourCC("gnlt"));
    EntryRef chosen;
    int32 extra = 0;
    EXPECT_EQ(answer.FindRef("refs", &chosen), B_OK);
    EXPECT_EQ(chosen.Path(), "/usr/include");
    EXPECT_EQ(answer.FindInt32("extra", &extra), B_OK);
    EXPECT_EQ(answer.FindInt32("late", &extra), B_ERROR) << "the message was copied when it was set";
    EXPECT_TRUE(PanelIsGone());
    EXPECT_EQ(diary.lines, Lines({"panel Select"}));
}

TEST_F(Panel, SendsNothingWhenDismissed)
{
    display.AnswerPanel(std::nullopt);
    Open();
    vetch::Settle();
    EXPECT_TRUE(receiver->received.empty());
    EXPECT_TRUE(PanelIsGone());
}

TEST_F(Panel, StaysOpenUntilItIsAnswered)
{
    Open();
    vetch::Settle();
    EXPECT_FALSE(PanelIsGone());
    EXPECT_TRUE(display.Windows().empty()) << "its window is the panel's own affair";
}

TEST_F(Panel, SurvivesADeadTarget)
{
    display.AnswerPanel("/usr/include");
    Open();
    receiver->Quit();
    vetch::Settle();
    EXPECT_EQ(vetch::Loopers().size(), 1u);
}

TEST_F(Panel, TellsTheDisplayWhatCanBeChosen)
{
    Listener listener;
    vetch::HeadlessDisplay other(&listener);
    vetch::SetDisplay(&other);
    Open();
    EXPECT_EQ(listener.panel.title, "Select");
    EXPECT_EQ(listener.panel.directory, "/tmp/somewhere");
    EXPECT_TRUE(listener.panel.directoriesOnly);
    EXPECT_FALSE(listener.panel.multiple);
    QuitAll();
    vetch::SetDisplay(&display);
}

TEST_F(Panel, AsksWithoutADirectoryAndATarget)
{
    display.AnswerPanel("/usr");
    (new BFilePanel(B_OPEN_PANEL, nullptr, nullptr, 0, true, nullptr, nullptr))->Show();
    vetch::Settle();
    EXPECT_TRUE(PanelIsGone());
}

TEST_F(Question, ABeepReachesTheDisplay)
{
    beep();
    beep();
    EXPECT_EQ(display.Beeps(), 2);
    EXPECT_EQ(diary.lines, Lines({"beep", "beep"}));
}

TEST_F(Question, ABeepIsSilentWithoutADisplay)
{
    vetch::SetDisplay(nullptr);
    beep();
    EXPECT_EQ(vetch::CurrentDisplay(), nullptr);
    vetch::SetDisplay(&display);
    EXPECT_EQ(display.Beeps(), 0);
}

#ifndef NDEBUG
TEST_F(Question, AskingWithALockHeldIsAnError)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    BLocker locker;
    BPopUpMenu menu("menu", false, false);
    auto* alert = new BAlert("title", "text", "OK");
    EXPECT_DEATH((locker.Lock(), alert->Go()), "HeldLocks");
    EXPECT_DEATH((locker.Lock(), menu.Go({0, 0}, false, false, false)), "HeldLocks");
    alert->Go();
}
#endif

} // namespace
