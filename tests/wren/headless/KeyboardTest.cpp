#include "wren/headless/Keyboard.h"

#include "wren/core/Document.h"
#include "wren/text/PlainText.h"

#include <gtest/gtest.h>

using wren::Document;
using wren::KeyEffect;
using wren::Selection;

TEST(Keyboard, ApplyKeyCases)
{
    const struct {
        const char* why;
        std::string text;
        Selection selected;
        std::string key;
        unsigned modifiers;
        std::string after;
        Selection then;
        KeyEffect effect;
    } kCases[] = {
        {"a character", "ab", {1, 1}, "x", 0, "axb", {2, 2}, KeyEffect::Typed},
        {"in place of the selection", "abcd", {1, 3}, "x", 0, "axd", {2, 2}, KeyEffect::Typed},
        {"with shift", "", {0, 0}, "A", 0x1, "A", {1, 1}, KeyEffect::Typed},
        {"with caps", "", {0, 0}, "A", 0x8, "A", {1, 1}, KeyEffect::Typed},
        {"with control it types nothing", "", {0, 0}, "a", 0x4, "", {0, 0}, KeyEffect::Nothing},
        {"enter", "ab", {1, 1}, "enter", 0, "a\nb", {2, 2}, KeyEffect::Typed},
        {"tab", "", {0, 0}, "tab", 0, "\t", {1, 1}, KeyEffect::Typed},
        {"control and enter", "", {0, 0}, "enter", 0x4, "", {0, 0}, KeyEffect::Nothing},
        {"escape", "ab", {1, 1}, "escape", 0, "ab", {1, 1}, KeyEffect::Nothing},
        {"backspace takes a whole character", "a\xc3\xa9z", {3, 3}, "backspace", 0, "az", {1, 1}, KeyEffect::Edited},
        {"backspace takes the selection", "abcd", {1, 3}, "backspace", 0, "ad", {1, 1}, KeyEffect::Edited},
        {"backspace at the beginning", "ab", {0, 0}, "backspace", 0, "ab", {0, 0}, KeyEffect::Edited},
        {"delete takes a whole character", "a\xc3\xa9z", {1, 1}, "delete", 0, "az", {1, 1}, KeyEffect::Edited},
        {"delete at the end", "ab", {2, 2}, "delete", 0, "ab", {2, 2}, KeyEffect::Edited},
        {"left", "a\xc3\xa9z", {3, 3}, "left", 0, "a\xc3\xa9z", {1, 1}, KeyEffect::Edited},
        {"left over an invalid byte", "a\xa9z", {2, 2}, "left", 0, "a\xa9z", {1, 1}, KeyEffect::Edited},
        {"left of a selection", "abcd", {1, 3}, "left", 0, "abcd", {1, 1}, KeyEffect::Edited},
        {"right", "a\xc3\xa9z", {1, 1}, "right", 0, "a\xc3\xa9z", {3, 3}, KeyEffect::Edited},
        {"right of a selection", "abcd", {1, 3}, "right", 0, "abcd", {3, 3}, KeyEffect::Edited},
        {"up", "abcd\nxy", {6, 6}, "up", 0, "abcd\nxy", {1, 1}, KeyEffect::Edited},
        {"up on the first line", "ab", {1, 1}, "up", 0, "ab", {1, 1}, KeyEffect::Edited},
        {"down to a shorter line", "abcd\nxy", {3, 3}, "down", 0, "abcd\nxy", {7, 7}, KeyEffect::Edited},
        {"down on the last line", "ab", {1, 1}, "down", 0, "ab", {1, 1}, KeyEffect::Edited},
    };
    for (const auto& each : kCases) {
        Document document(1, "", std::make_unique<wren::PlainText>(), false);
        document.SetText(each.text);
        document.Select(each.selected.start, each.selected.end);
        EXPECT_EQ(wren::ApplyKey(document, each.key, each.modifiers), each.effect) << each.why;
        EXPECT_EQ(document.Text(), each.after) << each.why;
        EXPECT_EQ(document.Selected(), each.then) << each.why;
    }
}

TEST(Keyboard, StrokeOfCases)
{
    const struct {
        const char* why;
        std::string key;
        unsigned modifiers;
        std::string bytes; // "" for no key
    } kCases[] = {
        {"a character", "a", 0, "a"},
        {"several bytes", "\xc3\xa9", 0, "\xc3\xa9"},
        {"enter", "enter", 0, "\x0a"},
        {"up", "up", 0, "\x1e"},
        {"down", "down", 0, "\x1f"},
        {"with shift", ">", 0x1, ">"},
        {"with control, shift does not count", ">", 0x5, "."},
        {"nor for letters", "A", 0x5, "a"},
        {"two characters", "ab", 0, ""},
        {"none", "", 0, ""},
        {"an unknown name", "home", 0, ""},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(wren::StrokeOf(each.key, each.modifiers).value_or(wren::KeyStroke()).bytes, each.bytes) << each.why;
}
