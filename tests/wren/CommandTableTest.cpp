#include "wren/core/CommandTable.h"

#include <gtest/gtest.h>

using wren::CommandTable;
using wren::KeyBinding;

TEST(CommandTable, BindsCompletionToControlPeriodByDefault)
{
    const CommandTable table;
    EXPECT_EQ(table.BindingOf("SymbolCompletion"), (KeyBinding{'.', 0x4}));
    EXPECT_EQ(table.CommandFor({'.', 0x4}), "SymbolCompletion");
}

TEST(CommandTable, MatchesAllModifiersExceptLocks)
{
    const CommandTable table;
    const struct {
        const char* why;
        KeyBinding pressed;
        bool bound;
    } kCases[] = {
        {"as bound", {'.', 0x4}, true},
        {"a lock key changes nothing", {'.', 0x4 | 0x8}, true},
        {"shift is another stroke", {'.', 0x4 | 0x1}, false},
        {"no modifier", {'.', 0}, false},
        {"another key", {',', 0x4}, false},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(table.CommandFor(each.pressed).has_value(), each.bound) << each.why;
}

TEST(CommandTable, HasNoKeyForAnUnboundCommand)
{
    EXPECT_EQ(CommandTable().BindingOf("SymbolLookup"), (KeyBinding{0, 0}));
}

TEST(CommandTable, GivesACommandItsNewestBindingAndTakesItFromOthers)
{
    CommandTable table;
    table.Bind("SymbolLookup", {'d', 0x2});
    table.Bind("SymbolLookup", {'e', 0x2});
    EXPECT_EQ(table.CommandFor({'d', 0x2}), std::nullopt);
    table.Bind("DefinitionLookup", {'e', 0x2});
    EXPECT_EQ(table.CommandFor({'e', 0x2}), "DefinitionLookup");
    EXPECT_EQ(table.BindingOf("SymbolLookup"), (KeyBinding{0, 0}));
}

TEST(CommandTable, UnbindsWithKeyZero)
{
    CommandTable table;
    table.Bind("SymbolCompletion", {0, 0});
    EXPECT_EQ(table.CommandFor({'.', 0x4}), std::nullopt);
    EXPECT_EQ(table.CommandFor({0, 0}), std::nullopt);
}

TEST(CommandTable, KeepsOneEntryForACommandRegisteredTwice)
{
    CommandTable table;
    table.Register("SymbolLookup", "old");
    table.Register("SymbolLookup", "new");
    ASSERT_EQ(table.Registered().size(), 1u);
    EXPECT_EQ(table.Registered()[0].help, "new");
}
