// Which keys the list takes from the document while it is open.
#include "tests/completion/ListedWindow.h"

namespace {

constexpr bool kFocused = true;
constexpr bool kUnfocused = false;
constexpr bool kTaken = true;
constexpr bool kLeft = false;

constexpr char kEscape = 0x1b;
constexpr char kTab = 0x09;
constexpr char kReturn = 0x0d;
constexpr char kLeftArrow = 0x1c;
constexpr char kRightArrow = 0x1d;
constexpr char kBackspace = 0x08;
constexpr char kDelete = 0x7f;
constexpr char kHome = 0x01;
constexpr char kEnd = 0x04;
constexpr char kPageUp = 0x0b;
constexpr char kPageDown = 0x0c;
constexpr long kChosen = -1; // the list is gone

struct Case {
    const char* why;
    bool before;
    char key;
    int32 modifiers;
    bool taken;
    bool after;
    long selected; // of five entries, of which the third was selected
};

const Case kCases[] = {
    {"Down goes into the list, and moves at once", kUnfocused, B_DOWN_ARROW, 0, kTaken, kFocused, 3},
    {"and continues in it", kFocused, B_DOWN_ARROW, 0, kTaken, kFocused, 3},
    {"Up is the document's at first", kUnfocused, B_UP_ARROW, 0, kLeft, kUnfocused, 2},
    {"and the list's once in it", kFocused, B_UP_ARROW, 0, kTaken, kFocused, 1},
    {"Enter breaks the line at first", kUnfocused, B_ENTER, 0, kLeft, kUnfocused, 2},
    {"and chooses once in it", kFocused, B_ENTER, 0, kTaken, kFocused, kChosen},
    {"a blank is typed at first", kUnfocused, B_SPACE, 0, kLeft, kUnfocused, 2},
    {"and chooses once in it", kFocused, B_SPACE, 0, kTaken, kFocused, kChosen},
    {"the shortcut chooses", kFocused, '.', B_CONTROL_KEY, kTaken, kFocused, kChosen},
    {"at first as well, and leaves the focus", kUnfocused, '.', B_CONTROL_KEY, kTaken, kUnfocused, kChosen},
    {"with more modifiers too", kUnfocused, '.', B_CONTROL_KEY | B_SHIFT_KEY, kTaken, kUnfocused, kChosen},
    {"with Caps Lock too", kUnfocused, '.', B_CONTROL_KEY | B_CAPS_LOCK, kTaken, kUnfocused, kChosen},
    {"with all of them", kFocused, '.', 0xff, kTaken, kFocused, kChosen},
    {"not without its modifier", kFocused, '.', 0, kLeft, kUnfocused, 2},
    {"nor with another", kFocused, '.', B_COMMAND_KEY, kLeft, kUnfocused, 2},

    {"a letter is typed", kUnfocused, 'a', 0, kLeft, kUnfocused, 2},
    {"and leaves the list", kFocused, 'a', 0, kLeft, kUnfocused, 2},
    {"Escape leaves the list and is the document's", kFocused, kEscape, 0, kLeft, kUnfocused, 2},
    {"also when it was not in it", kUnfocused, kEscape, 0, kLeft, kUnfocused, 2},
    {"Tab", kFocused, kTab, 0, kLeft, kUnfocused, 2},
    {"Return is another key than Enter", kFocused, kReturn, 0, kLeft, kUnfocused, 2},
    {"Left", kFocused, kLeftArrow, 0, kLeft, kUnfocused, 2},
    {"Right", kFocused, kRightArrow, 0, kLeft, kUnfocused, 2},
    {"Backspace", kFocused, kBackspace, 0, kLeft, kUnfocused, 2},
    {"Delete", kFocused, kDelete, 0, kLeft, kUnfocused, 2},
    {"Home", kFocused, kHome, 0, kLeft, kUnfocused, 2},
    {"End", kFocused, kEnd, 0, kLeft, kUnfocused, 2},
    {"Page Up", kFocused, kPageUp, 0, kLeft, kUnfocused, 2},
    {"Page Down", kFocused, kPageDown, 0, kLeft, kUnfocused, 2},
    {"a byte from 0x80", kFocused, '\xc3', 0, kLeft, kUnfocused, 2},
    {"and one that is Down but for its first bit", kFocused, '\x9f', 0, kLeft, kUnfocused, 2},

    {"Shift-Down selects text", kFocused, B_DOWN_ARROW, B_SHIFT_KEY, kLeft, kUnfocused, 2},
    {"at first as well", kUnfocused, B_DOWN_ARROW, B_SHIFT_KEY, kLeft, kUnfocused, 2},
    {"Command-Down", kFocused, B_DOWN_ARROW, B_COMMAND_KEY, kLeft, kUnfocused, 2},
    {"Control-Down", kFocused, B_DOWN_ARROW, B_CONTROL_KEY, kLeft, kUnfocused, 2},
    {"Option-Down", kFocused, B_DOWN_ARROW, B_OPTION_KEY, kLeft, kUnfocused, 2},
    {"Shift-Up", kFocused, B_UP_ARROW, B_SHIFT_KEY, kLeft, kUnfocused, 2},
    {"Shift-Enter", kFocused, B_ENTER, B_SHIFT_KEY, kLeft, kUnfocused, 2},
    {"Option-blank", kFocused, B_SPACE, B_OPTION_KEY, kLeft, kUnfocused, 2},
    {"Caps Lock stops Down", kUnfocused, B_DOWN_ARROW, B_CAPS_LOCK, kLeft, kUnfocused, 2},
    {"and in the list as well", kFocused, B_DOWN_ARROW, B_CAPS_LOCK, kLeft, kUnfocused, 2},
    {"and Up", kFocused, B_UP_ARROW, B_CAPS_LOCK, kLeft, kUnfocused, 2},
    {"and Enter", kFocused, B_ENTER, B_CAPS_LOCK, kLeft, kUnfocused, 2},
    {"and a blank", kFocused, B_SPACE, B_CAPS_LOCK, kLeft, kUnfocused, 2},
    {"so does any bit, whatever it means", kFocused, B_DOWN_ARROW, 0x20, kLeft, kUnfocused, 2},
    {"the highest of all too", kFocused, B_DOWN_ARROW, INT32_MIN, kLeft, kUnfocused, 2},
};

class KeyRouting : public ListedWindowTest {
protected:
    static constexpr bool kBoth[] = {kUnfocused, kFocused};

    // Without the list's answer, so that it can be asked very often.
    bool RouteOnly(const BMessage& key) const
    {
        return CompletionWindow::RouteKeyboardEventIfNeeded(nullptr, &key) == 2;
    }
};

TEST_F(KeyRouting, Cases)
{
    for (const Case& row : kCases) {
        Open({"v", "w", "x", "y", "z"});
        ASSERT_TRUE(framework.display.ClickItem(Seen().number, 2));
        framework.Settle();
        window->SetFocus(row.before);
        EXPECT_EQ(Route(row.key, row.modifiers), row.taken) << row.why;
        if (row.selected == kChosen) {
            EXPECT_EQ(Sent(), Lines{"ksel 7: x"}) << row.why;
            EXPECT_TRUE(framework.Windows().empty()) << row.why;
            continue;
        }
        EXPECT_EQ(Sent(), Lines{}) << row.why;
        EXPECT_EQ(IsFocused(), row.after) << row.why;
        EXPECT_EQ(IsUnfocused(), !row.after) << row.why;
        EXPECT_EQ(Seen().list->selected, row.selected) << row.why;
        window->Quit();
    }
}

struct Rule {
    bool taken;
    bool after;
};

// The whole rule once more, step by step as a user would be told it.
Rule Expected(bool focused, char key, int32 modifiers)
{
    if (key == '.' && (modifiers & B_CONTROL_KEY) != 0)
        return {kTaken, focused};
    if (modifiers != 0)
        return {kLeft, kUnfocused};
    if (focused && (key == ' ' || key == '\n' || key == 0x1e))
        return {kTaken, kFocused};
    if (key == 0x1f)
        return {kTaken, kFocused};
    return {kLeft, kUnfocused};
}

TEST_F(KeyRouting, EveryKeyWithEverySingleModifier)
{
    Make(); // never shown: what the list would do with the keys is of no interest
    for (const bool before : kBoth)
        for (int byte = -128; byte < 128; ++byte)
            for (const int32 modifiers : {0x00, 0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80, 0x05, 0x0c, 0x4b}) {
                const char key = static_cast<char>(byte);
                window->SetFocus(before);
                const Rule expected = Expected(before, key, modifiers);
                ASSERT_EQ(RouteOnly(KeyDown(std::string(1, key), modifiers)), expected.taken)
                    << byte << " with " << modifiers << (before ? " in the list" : " in the text");
                ASSERT_EQ(IsFocused(), expected.after) << byte << " with " << modifiers;
            }
}

TEST_F(KeyRouting, OnlyTheFirstByteOfAKeyCounts)
{
    Make();
    for (const bool before : kBoth) {
        window->SetFocus(before);
        EXPECT_TRUE(RouteOnly(KeyDown("\x1f"
                                      "abc",
                                      0)));
        EXPECT_FALSE(RouteOnly(KeyDown("a\x1f", 0)));
        EXPECT_FALSE(IsFocused());
        EXPECT_TRUE(RouteOnly(KeyDown(".x", B_CONTROL_KEY)));
        EXPECT_FALSE(RouteOnly(KeyDown("x.", B_CONTROL_KEY)));
    }
}

// A key that is not fully told is nobody's, and changes nothing.
TEST_F(KeyRouting, AnIncompleteKeyMessageIsLeftAlone)
{
    Make();
    BMessage noByte(B_KEY_DOWN);
    noByte.AddInt32("modifiers", 0);
    BMessage noModifiers(B_KEY_DOWN);
    noModifiers.AddInt8("byte", B_DOWN_ARROW);
    BMessage noShortcut(B_KEY_DOWN);
    noShortcut.AddInt8("byte", '.');
    BMessage wrongTypes(B_KEY_DOWN);
    wrongTypes.AddInt32("byte", B_DOWN_ARROW);
    wrongTypes.AddInt8("modifiers", 0);
    for (const BMessage& message : {noByte, noModifiers, noShortcut, wrongTypes, BMessage(B_KEY_DOWN)})
        for (const bool before : kBoth) {
            window->SetFocus(before);
            EXPECT_FALSE(RouteOnly(message));
            EXPECT_EQ(IsFocused(), before);
            EXPECT_FALSE(window->IsInvokeShortcutEvent(&message));
        }
}

TEST_F(KeyRouting, NoKeyIsTakenWithoutAWindow)
{
    ASSERT_EQ(CompletionWindow::gCompletionWindow, nullptr);
    for (const char key : {'\x1f', '\n', ' ', 'a'})
        EXPECT_FALSE(Route(key)) << key;
    EXPECT_FALSE(Route('.', B_CONTROL_KEY));
}

TEST_F(KeyRouting, TheKeyMessageStaysUnchanged)
{
    Open({"a", "b"});
    const BMessage key = KeyDown("\x1f", 0);
    EXPECT_EQ(CompletionWindow::RouteKeyboardEventIfNeeded(&host, &key), 2);
    EXPECT_EQ(key.what, B_KEY_DOWN);
    int8 byte = 0;
    EXPECT_EQ(key.FindInt8("byte", 0, &byte), B_OK);
    EXPECT_EQ(byte, B_DOWN_ARROW);
    EXPECT_NE(key.FindInt8("byte", 1, &byte), B_OK);
}

// The first entry is selected from the start, so a user who wants it presses Down and Up, or the shortcut.
TEST_F(KeyRouting, TheFirstDownGoesToTheSecondEntry)
{
    Open({"a", "b", "c"});
    EXPECT_EQ(Seen().list->selected, 0);
    EXPECT_TRUE(Route(B_DOWN_ARROW));
    EXPECT_EQ(Seen().list->selected, 1);
    EXPECT_TRUE(Route(B_UP_ARROW));
    EXPECT_EQ(Seen().list->selected, 0);
    EXPECT_TRUE(Route(B_UP_ARROW)) << "the list's end as well: it has the keys";
    EXPECT_EQ(Seen().list->selected, 0);
    EXPECT_TRUE(Route(B_ENTER));
    EXPECT_EQ(Sent(), Lines{"ksel 7: a"});
}

TEST_F(KeyRouting, TheMoreEntryCanBeSelectedButNotChosen)
{
    Open(Numbered("name", 201));
    for (int i = 0; i < 205; ++i)
        EXPECT_TRUE(Route(B_DOWN_ARROW));
    EXPECT_EQ(Seen().list->selected, 200);
    for (const char key : {'\n', ' '})
        EXPECT_TRUE(Route(key)) << "it is taken all the same";
    EXPECT_TRUE(Route('.', B_CONTROL_KEY));
    EXPECT_EQ(Sent(), Lines{});
    ASSERT_NE(CompletionWindow::gCompletionWindow, nullptr) << "the list stays";
    EXPECT_TRUE(IsFocused());
    EXPECT_TRUE(Route(B_UP_ARROW));
    EXPECT_TRUE(Route(B_ENTER));
    EXPECT_EQ(Sent(), Lines{"ksel 7: name199"});
}

} // namespace
