// The key that the user has bound to the completion command chooses from the list.
#include "tests/completion/ListedWindow.h"
#include "vetch/interface/BView.h"

namespace {

struct Case {
    const char* why;
    char boundKey;
    uint32 boundModifiers;
    const char* key;
    int32 modifiers;
    bool matches;
};

constexpr int32 kNumLock = 0x20;

const Case kCases[] = {
    {"as bound", '.', B_CONTROL_KEY, ".", B_CONTROL_KEY, true},
    {"another key", '.', B_CONTROL_KEY, ",", B_CONTROL_KEY, false},
    {"no modifier", '.', B_CONTROL_KEY, ".", 0, false},
    {"another modifier", '.', B_CONTROL_KEY, ".", B_COMMAND_KEY, false},
    {"one more modifier", '.', B_CONTROL_KEY, ".", B_CONTROL_KEY | B_SHIFT_KEY, true},
    {"all modifiers", '.', B_CONTROL_KEY, ".", 0xff, true},
    {"a lock key", '.', B_CONTROL_KEY, ".", B_CONTROL_KEY | B_CAPS_LOCK | kNumLock, true},
    {"two modifiers", '.', B_CONTROL_KEY | B_OPTION_KEY, ".", B_CONTROL_KEY | B_OPTION_KEY, true},
    {"one of two", '.', B_CONTROL_KEY | B_OPTION_KEY, ".", B_OPTION_KEY, false},
    {"the other of two", '.', B_CONTROL_KEY | B_OPTION_KEY, ".", B_CONTROL_KEY, false},
    {"all four", 'k', 0x47, "k", 0x47, true},
    {"three of four", 'k', 0x47, "k", 0x46, false},
    {"a lock key in what is bound counts for nothing", '.', B_CONTROL_KEY | B_CAPS_LOCK, ".", B_CONTROL_KEY, true},
    {"nor do bits that mean nothing here", '.', B_CONTROL_KEY | 0xffffffb8, ".", B_CONTROL_KEY, true},
    {"a lock key alone is not a modifier, so any will do", '.', B_CAPS_LOCK, ".", 0, true},
    {"bound without modifiers", '\t', 0, "\t", 0, true},
    {"and any may be held", '\t', 0, "\t", B_SHIFT_KEY, true},
    {"case counts", 'k', B_CONTROL_KEY, "K", B_CONTROL_KEY, false},
    {"a key from 0x80", '\xe9', B_CONTROL_KEY, "\xe9", B_CONTROL_KEY, true},
    {"the first byte of a key that has more", '\xc3', B_CONTROL_KEY, "\xc3\xa9", B_CONTROL_KEY, true},
    {"not a later one", '\xa9', B_CONTROL_KEY, "\xc3\xa9", B_CONTROL_KEY, false},
    {"nothing bound: no key that is told", 0, 0, "a", 0, false},
};

class Shortcut : public ListedWindowTest {
protected:
    void Bind(char key, uint32 modifiers) { host.shortcuts["SymbolCompletion"] = {key, modifiers}; }

    // Sends the key straight to that handler of the window.
    void SendKey(BHandler* handler, const char* key, int32 modifiers)
    {
        const BMessage message = KeyDown(key, modifiers);
        window->PostMessage(&message, handler);
        framework.Settle();
    }
};

TEST_F(Shortcut, IsTheKeyThatTheHostHasBound)
{
    for (const Case& row : kCases) {
        Bind(row.boundKey, row.boundModifiers);
        Make();
        const BMessage message = KeyDown(row.key, row.modifiers);
        EXPECT_EQ(window->IsInvokeShortcutEvent(&message), row.matches) << row.why;
        window->Quit();
    }
}

// The host answers a key of 0 then, and no keyboard has that; but no rule excepts it.
TEST_F(Shortcut, AnUnboundShortcutIsTheKeyZero)
{
    Bind(0, 0);
    Make();
    const BMessage zero = KeyDown(std::string(1, '\0'), 0);
    EXPECT_TRUE(window->IsInvokeShortcutEvent(&zero));
}

TEST_F(Shortcut, IsTheCompletionCommandsKeyAtTheTimeTheListOpened)
{
    host.shortcuts = {{"SymbolLookup", {'l', 0}}, {"SymbolCompletion", {'k', B_COMMAND_KEY}}};
    Open({"a"});
    Bind('j', B_COMMAND_KEY);
    EXPECT_FALSE(Route('j', B_COMMAND_KEY));
    EXPECT_FALSE(Route('l'));
    EXPECT_TRUE(Route('k', B_COMMAND_KEY));
    EXPECT_EQ(Sent(), Lines{"ksel 7: a"});
}

TEST_F(Shortcut, BeatsTheKeysThatMoveInTheList)
{
    Bind(B_DOWN_ARROW, 0);
    Open({"a", "b"});
    EXPECT_TRUE(Route(B_DOWN_ARROW));
    EXPECT_EQ(Sent(), Lines{"ksel 7: a"});
}

TEST_F(Shortcut, ChoosesTheSelectedEntry)
{
    Open({"a", "b", "c"});
    Route(B_DOWN_ARROW);
    Route('.', B_CONTROL_KEY);
    EXPECT_EQ(Sent(), Lines{"ksel 7: b"});
}

TEST_F(Shortcut, IsUsedUpByTheList)
{
    Bind(B_UP_ARROW, B_CONTROL_KEY);
    Open({"a", "b", "c"});
    Route(B_DOWN_ARROW);
    SendKey(ListedWindow::Of(window)->TheList(), "\x1e", B_CONTROL_KEY);
    EXPECT_EQ(Sent(), Lines{"ksel 7: b"}) << "the arrow in it moved nothing";
}

// Seen where the list stays open: at the entry that says that there are more.
TEST_F(Shortcut, DoesNotMoveTheSelection)
{
    Bind(B_UP_ARROW, B_CONTROL_KEY);
    Open(Numbered("name", 201));
    ASSERT_TRUE(framework.display.ClickItem(Seen().number, 200));
    framework.Settle();
    SendKey(ListedWindow::Of(window)->TheList(), "\x1e", B_CONTROL_KEY);
    EXPECT_EQ(Seen().list->selected, 200);
    SendKey(ListedWindow::Of(window)->TheList(), "\x1e", 0);
    EXPECT_EQ(Seen().list->selected, 199) << "as the key alone does";
}

TEST_F(Shortcut, IsAnOrdinaryKeyToOtherHandlers)
{
    Open({"a", "b", "c"});
    SendKey(nullptr, ".", B_CONTROL_KEY);
    SendKey(window, ".", B_CONTROL_KEY);
    SendKey(ListedWindow::Of(window)->TheList()->Parent(), ".", B_CONTROL_KEY);
    EXPECT_EQ(Sent(), Lines{});
    EXPECT_EQ(CompletionWindow::gCompletionWindow, window);
}

TEST_F(Shortcut, CountsInAKeyDownMessageOnly)
{
    Open({"a", "b", "c"});
    BMessage other = KeyDown(".", B_CONTROL_KEY);
    other.what = FourCC("_KYU");
    ListedWindow::Of(window)->PostToList(other);
    framework.Settle();
    EXPECT_EQ(Sent(), Lines{});
    EXPECT_EQ(CompletionWindow::gCompletionWindow, window);
}

TEST_F(Shortcut, OtherKeysKeepTheirEffectInTheList)
{
    Open({"a", "b", "c"});
    BListView* list = ListedWindow::Of(window)->TheList();
    SendKey(list, "\x1f", 0);
    EXPECT_EQ(Seen().list->selected, 1);
    SendKey(list, "\x1f", B_SHIFT_KEY);
    EXPECT_EQ(Seen().list->selected, 2) << "what modifiers mean was decided before";
    SendKey(list, ".", 0);
    EXPECT_EQ(Sent(), Lines{});
    SendKey(list, " ", 0);
    EXPECT_EQ(Sent(), Lines{"ksel 7: c"});
}

} // namespace
