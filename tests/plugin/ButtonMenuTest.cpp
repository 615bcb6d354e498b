#include "plugin/ButtonMenu.h"

#include "plugin/Activation.h"
#include "plugin/KeyEvents.h"
#include "tests/plugin/PluginTest.h"

namespace {

struct Row {
    const char* label;
    const char* command; // whose key it shows
    bool needsWord;
};

const Row kRows[] = {
    {"Look up symbol", "SymbolLookup", true},          {"Look up declaration", "DeclarationLookup", false},
    {"Look up definition", "DefinitionLookup", false}, {"Look up...", "SymbolLookupDialog", false},
    {"Create local tags...", nullptr, false},          {"Update local tags", nullptr, false},
    {"Create or update system tags", nullptr, false},  {"Help create tags in Worksheet", nullptr, false},
    {"Complete symbol", "SymbolCompletion", true},
};

class ButtonMenu : public PluginTest {
protected:
    vetch::MenuDescription Menu()
    {
        EXPECT_EQ(Send(101), 1);
        return witness.menus.back();
    }
    void Choose(long row)
    {
        framework.display.AnswerMenu(row);
        EXPECT_EQ(Send(101), 1) << row;
    }
};

TEST_F(ButtonMenu, HasNineItemsInASmallFont)
{
    const vetch::MenuDescription menu = Menu();
    EXPECT_EQ(menu.name, "declarationPopUp");
    EXPECT_EQ(menu.fontSize, 10);
    ASSERT_EQ(menu.rows.size(), std::size(kRows));
    for (size_t i = 0; i < menu.rows.size(); ++i)
        EXPECT_EQ(menu.rows[i].label, kRows[i].label);
}

TEST_F(ButtonMenu, OpensBelowTheButtonOnTheScreen)
{
    EXPECT_EQ(Menu().where, (BPoint{48, 86}));
    host.window = nullptr; // then the button's own place is all there is
    EXPECT_EQ(Menu().where, (BPoint{8, 26}));
}

TEST_F(ButtonMenu, ShowsTheKeysOfBoundCommands)
{
    for (const Row& row : kRows)
        if (row.command != nullptr)
            host.shortcuts[row.command] = {row.label[8], B_CONTROL_KEY};
    const vetch::MenuDescription menu = Menu();
    for (size_t i = 0; i < menu.rows.size(); ++i) {
        EXPECT_EQ(menu.rows[i].key, kRows[i].command == nullptr ? 0 : kRows[i].label[8]) << kRows[i].label;
        EXPECT_EQ(menu.rows[i].modifiers, kRows[i].command == nullptr ? 0u : uint32{B_CONTROL_KEY}) << kRows[i].label;
    }
}

TEST_F(ButtonMenu, ShowsNoKeysForUnboundCommands)
{
    for (const vetch::MenuRow& row : Menu().rows)
        EXPECT_EQ(row.key, 0) << row.label;
}

TEST(SetModifiersIfDefined, SkipsCommandsWithoutAKey)
{
    FakeHost host;
    BMenuItem item("Look up...", nullptr, 'L', B_COMMAND_KEY);
    SetModifiersIfDefined(&host, &item, "SymbolLookupDialog");
    EXPECT_EQ(item.Shortcut(), 'L');
    EXPECT_EQ(item.ShortcutModifiers(), B_COMMAND_KEY);
    host.shortcuts["SymbolLookupDialog"] = {'.', B_CONTROL_KEY};
    SetModifiersIfDefined(&host, &item, "SymbolLookupDialog");
    EXPECT_EQ(item.Shortcut(), '.');
    EXPECT_EQ(item.ShortcutModifiers(), B_CONTROL_KEY);
}

struct Word {
    const char* why;
    const char* text;
    bool hasWord;
};

const Word kWords[] = {
    {"behind a word", "draw|()", true},
    {"before a word", "(|draw", true},
    {"a selected word", "([[draw]])", true},
    {"a selection that spans words ends in one", "[[draw view]]", true},
    {"a selection that spans lines ends in a word", "[[draw\nview]]", true},
    {"a selection that only starts with a word", "[[draw ]] x", false},
    {"between blanks", "draw | view", false},
    {"an empty document", "|", false},
};

TEST_F(ButtonMenu, NeedsAWordAtTheEndOfTheSelectionForTwoItems)
{
    for (const Word& word : kWords) {
        host.SetMarked(word.text);
        const vetch::MenuDescription menu = Menu();
        for (size_t i = 0; i < menu.rows.size(); ++i)
            EXPECT_EQ(menu.rows[i].enabled, word.hasWord || !kRows[i].needsWord) << word.why << ": " << kRows[i].label;
    }
}

TEST_F(ButtonMenu, RunsTheChosenItem)
{
    UseSomeTags();
    host.SetMarked("draw|");
    struct Choice {
        long row;
        Calls open;
        Opened opened;
        Calls seats;
    };
    const Choice kChoices[] = {
        {0, {"list: draw - view.h; draw - view.cpp;"}, {}, {}},
        {1, {}, {{Source("view.h"), 12}}, {}},
        {2, {}, {{Source("view.cpp"), 34}}, {}},
        {4, {}, {}, {"CreateLocalTags"}},
        {5, {}, {}, {"CreateOrUpdateLocalTags"}},
        {6, {}, {}, {"CreateTags system"}},
        {7, {}, {}, {"HelpCreateTags system local"}},
        {8, {}, {}, {"SelectionSuggestCompletions"}},
        {3, {""}, {}, {}}, // the dialog, which stays open
    };
    for (const Choice& choice : kChoices) {
        Choose(choice.row);
        EXPECT_EQ(Open(), choice.open) << choice.row;
        EXPECT_EQ(std::exchange(framework.application->opened, {}), choice.opened) << choice.row;
        EXPECT_EQ(std::exchange(Seats::calls, {}), choice.seats) << choice.row;
    }
    EXPECT_TRUE(host.log.empty()); // no "CommandDone": no command was named
}

TEST_F(ButtonMenu, CompletingFromItDoesNotShieldTheEdit)
{
    host.SetMarked("draw|");
    Choose(8);
    EXPECT_FALSE(gHandlingAutoCompletePrimitive);
}

TEST_F(ButtonMenu, ADismissedMenuDoesNothingButCloseAndClear)
{
    OpenResults();
    Seats::Reset();
    Send(300);
    EXPECT_EQ(Send(101), 1);
    EXPECT_TRUE(Open().empty());
    EXPECT_EQ(gJustActivatedWindow, nullptr);
    EXPECT_TRUE(Seats::calls.empty());
    EXPECT_TRUE(framework.application->opened.empty());
}

} // namespace
