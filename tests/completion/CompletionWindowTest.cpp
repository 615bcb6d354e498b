#include "completion/CompletionWindow.h"

#include "tests/completion/ListedWindow.h"

namespace {

class CompletionWindowTest : public ListedWindowTest {
protected:
    // As the list does when an entry is invoked, with that index.
    void Pick(int32 index)
    {
        BMessage pick(FourCC("Pick"));
        pick.AddInt32("index", index);
        window->PostMessage(&pick);
        framework.Settle();
    }
};

TEST_F(CompletionWindowTest, IsABorderedPopUpWithoutATitle)
{
    Open({"a", "b"});
    const auto seen = Seen();
    EXPECT_EQ(seen.title, "");
    EXPECT_EQ(seen.look, B_BORDERED_WINDOW_LOOK);
    EXPECT_FALSE(seen.active) << "the document keeps the keyboard";
    EXPECT_EQ(seen.list->items, (Lines{"a", "b"}));
    EXPECT_EQ(seen.list->selected, 0);
    EXPECT_EQ(seen.limits[0], 50) << "the least width of one that cannot be resized";
}

TEST_F(CompletionWindowTest, IsTheGlobalWindowUntilItIsDestroyed)
{
    EXPECT_EQ(CompletionWindow::gCompletionWindow, nullptr);
    Make();
    EXPECT_EQ(CompletionWindow::gCompletionWindow, window) << "from its construction on";
    window->Quit();
    EXPECT_EQ(CompletionWindow::gCompletionWindow, nullptr);
    Open({"a"});
    EXPECT_EQ(CompletionWindow::gCompletionWindow, window);
    window->Quit();
    EXPECT_EQ(CompletionWindow::gCompletionWindow, nullptr);
}

TEST_F(CompletionWindowTest, ColoursTheSelectionByKeyboardFocus)
{
    Open({"a"});
    EXPECT_TRUE(IsUnfocused());
    for (int round = 0; round < 2; ++round) {
        window->SetFocus(true);
        EXPECT_TRUE(IsFocused());
        window->SetFocus(false);
        EXPECT_TRUE(IsUnfocused());
    }
}

TEST_F(CompletionWindowTest, IsNotFocusedAtFirst)
{
    Make();
    EXPECT_TRUE(IsUnfocused()) << "the colour is set even before it is shown";
    EXPECT_FALSE(Route(B_ENTER));
}

TEST_F(CompletionWindowTest, AClickGivesItTheKeysAndSelects)
{
    Open({"a", "b", "c"});
    ASSERT_TRUE(framework.display.ClickItem(Seen().number, 2));
    framework.Settle();
    EXPECT_TRUE(IsFocused());
    EXPECT_EQ(Seen().list->selected, 2) << "the click is the list's as well";
    EXPECT_EQ(Sent(), Lines{}) << "one click chooses nothing";
    EXPECT_TRUE(Route(B_UP_ARROW));
    EXPECT_EQ(Seen().list->selected, 1);
}

// Only the mouse: keys and whatever else come to the list go past the filter.
TEST_F(CompletionWindowTest, OnlyAClickSetsTheFocus)
{
    Open({"a", "b"});
    BMessage key(B_KEY_DOWN);
    key.AddInt8("byte", B_DOWN_ARROW);
    key.AddInt32("modifiers", 0);
    ListedWindow::Of(window)->PostToList(key);
    ListedWindow::Of(window)->PostToList(BMessage(FourCC("some")));
    framework.Settle();
    EXPECT_EQ(Seen().list->selected, 1) << "the key itself is let through";
    EXPECT_TRUE(IsUnfocused());
}

TEST_F(CompletionWindowTest, ADoubleClickChoosesAnEntry)
{
    Open({"a", "b", "c"});
    ASSERT_TRUE(framework.display.InvokeItem(Seen().number, 1));
    framework.Settle();
    EXPECT_EQ(Sent(), Lines{"ksel 7: b"});
    EXPECT_EQ(CompletionWindow::gCompletionWindow, nullptr);
    EXPECT_TRUE(framework.Windows().empty()) << "it quits itself";
}

TEST_F(CompletionWindowTest, AChoiceGoesToTheDocumentThatItWasMadeFor)
{
    for (const long document : {1L, 7L, 2147483647L}) {
        host.documentID = 99; // that of the call does not matter
        Open({"a"}, document);
        Pick(0);
        EXPECT_EQ(Sent(), Lines{"ksel " + std::to_string(document) + ": a"});
    }
}

struct PickCase {
    const char* why;
    int entries;
    int32 index;
    const char* chosen; // "" for none
};

const PickCase kPicks[] = {
    {"the first", 3, 0, "name000"},
    {"the last", 3, 2, "name002"},
    {"no entry there: the list was refilled meanwhile", 3, 3, ""},
    {"far behind the end", 3, 2147483647, ""},
    {"before the first", 3, -1, ""},
    {"far before the first", 3, -2147483647 - 1, ""},
    {"the last that is listed", 250, 199, "name199"},
    {"the entry that says that there are more", 250, 200, ""},
    {"behind it", 250, 201, ""},
    {"nothing in the list", 0, 0, ""},
};

TEST_F(CompletionWindowTest, APickChoosesAnExistingEntryOnly)
{
    for (const PickCase& row : kPicks) {
        Open(Numbered("name", row.entries));
        Pick(row.index);
        const bool chooses = *row.chosen != '\0';
        EXPECT_EQ(Sent(), chooses ? Lines{std::string("ksel 7: ") + row.chosen} : Lines{}) << row.why;
        EXPECT_EQ(CompletionWindow::gCompletionWindow == nullptr, chooses) << row.why << ": otherwise it stays open";
        framework.QuitWindows();
    }
}

// Keys and clicks that come before the window has closed.
TEST_F(CompletionWindowTest, ChoosesOnlyOnce)
{
    Open({"a", "b"});
    ASSERT_TRUE(window->Lock()); // it cannot do anything yet
    const BMessage shortcut = KeyDown(".", B_CONTROL_KEY);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(CompletionWindow::RouteKeyboardEventIfNeeded(&host, &shortcut), 2);
    ASSERT_TRUE(framework.display.InvokeItem(Seen().number, 1));
    window->Unlock();
    framework.Settle();
    EXPECT_EQ(Sent(), Lines{"ksel 7: a"});
    EXPECT_TRUE(framework.Windows().empty());
}

TEST_F(CompletionWindowTest, APickWithoutAnIndexChangesNothing)
{
    Open({"a", "b"});
    BMessage pick(FourCC("Pick"));
    window->PostMessage(&pick);
    pick.AddString("index", "0");
    window->PostMessage(&pick);
    framework.Settle();
    EXPECT_EQ(Sent(), Lines{});
    EXPECT_EQ(CompletionWindow::gCompletionWindow, window);
}

TEST_F(CompletionWindowTest, AnEntryWithoutATextIsNotChosen)
{
    Open({"a"});
    ListedWindow::Of(window)->AddItemWithoutText();
    Pick(1);
    EXPECT_EQ(Sent(), Lines{});
    EXPECT_EQ(CompletionWindow::gCompletionWindow, window);
    Pick(0);
    EXPECT_EQ(Sent(), Lines{"ksel 7: a"});
}

TEST_F(CompletionWindowTest, ChoosesNothingWithoutASelection)
{
    Open({"a", "b"});
    ListedWindow::Of(window)->SelectNone();
    Route('.', B_CONTROL_KEY);
    EXPECT_EQ(Sent(), Lines{});
    EXPECT_EQ(CompletionWindow::gCompletionWindow, window);
}

TEST_F(CompletionWindowTest, LeavesOtherMessagesToTheFramework)
{
    Open({"a", "b"});
    BMessage other(FourCC("Look"));
    other.AddInt32("index", 0);
    window->PostMessage(&other);
    framework.Settle();
    EXPECT_EQ(Sent(), Lines{});
    EXPECT_EQ(CompletionWindow::gCompletionWindow, window);
    window->PostMessage(B_QUIT_REQUESTED);
    framework.Settle();
    EXPECT_EQ(CompletionWindow::gCompletionWindow, nullptr);
    EXPECT_EQ(Sent(), Lines{}) << "closing chooses nothing";
}

TEST_F(CompletionWindowTest, TheChoiceIsTheTextShownInTheList)
{
    for (const char* text : {"std::vector", "initWithFrame:style:", "\xff\xc3\xa9", "     ... more", ""}) {
        Open({text});
        Pick(0);
        EXPECT_EQ(Sent(), Lines{std::string("ksel 7: ") + text});
    }
}

} // namespace
