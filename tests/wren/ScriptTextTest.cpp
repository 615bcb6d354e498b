// Characters, cells and key strokes of the faces without a screen.
#include "wren/core/Document.h"
#include "wren/script/GridFace.h"
#include "wren/script/Keyboard.h"
#include "wren/script/Utf8.h"
#include "wren/text/PlainText.h"

#include <gtest/gtest.h>

using wren::Document;
using wren::KeyEffect;
using wren::Selection;

namespace {

class Grid : public wren::GridFace {
public:
    void OpenMatch(const std::string&, long) override {}
    void Warn(const std::string&) override {}
};

Document Made(const std::string& text, long caret)
{
    auto store = std::make_unique<wren::PlainText>();
    store->SetText(text);
    store->Select(caret, caret);
    return Document(1, "", std::move(store), false);
}

} // namespace

TEST(ValidUtf8, Cases)
{
    const struct {
        const char* why;
        std::string bytes;
        std::string text;
    } kCases[] = {
        {"plain", "abc", "abc"},
        {"two, three and four bytes", "\xc3\xa9\xe2\x82\xac\xf0\x9f\x90\xa6", "\xc3\xa9\xe2\x82\xac\xf0\x9f\x90\xa6"},
        {"a NUL is text", std::string("a\0b", 3), std::string("a\0b", 3)},
        {"a lone byte", "a\x80z", "a\xef\xbf\xbdz"},
        {"a cut sequence is replaced byte by byte", "\xe2\x82", "\xef\xbf\xbd\xef\xbf\xbd"},
        {"an overlong form", "\xc0\xaf", "\xef\xbf\xbd\xef\xbf\xbd"},
        {"half of a surrogate pair", "\xed\xa0\x80", "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"},
        {"beyond the last code point", "\xf4\x90\x80\x80", "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(wren::ValidUtf8(each.bytes), each.text) << each.why;
}

TEST(GridFace, PutsEachCharacterIntoItsCell)
{
    const Document document = Made("ab\nc\xc3\xa9z", 0);
    const struct {
        const char* why;
        long offset;
        BPoint point;
    } kCases[] = {
        {"the first", 0, {48, 96}},
        {"the second column", 1, {55, 96}},
        {"the second line", 3, {48, 111}},
        {"two bytes are one character", 6, {62, 111}},
        {"in the middle of a character: its left edge", 5, {55, 111}},
        {"the end of the text", 7, {69, 111}},
        {"past the end", 99, {69, 111}},
        {"before the beginning", -1, {48, 96}},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(Grid().PointAt(document, each.offset), each.point) << each.why;
}

TEST(GridFace, FindsTheCharacterUnderAPoint)
{
    const Document document = Made("ab\nc\xc3\xa9z\n", 0);
    const struct {
        const char* why;
        BPoint where;
        long offset;
    } kCases[] = {
        {"the first cell", {0, 0}, 0},        {"its last pixels", {6.9f, 14.9f}, 0},
        {"the next column", {7, 0}, 1},       {"past the line's end", {500, 0}, 2},
        {"the second line", {0, 15}, 3},      {"behind a character of two bytes", {14, 15}, 6},
        {"the empty last line", {30, 30}, 8}, {"past the text", {0, 500}, 8},
        {"left of the text", {-20, 15}, 3},   {"above the text", {7, -20}, 1},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(Grid().OffsetAt(document, each.where), each.offset) << each.why;
}

TEST(GridFace, FindsEachCharacterAtTheCentreOfItsCell)
{
    const Document document = Made("ab\n\nc\xc3\xa9z", 0);
    for (const long offset : {0L, 1L, 2L, 3L, 4L, 5L, 7L, 8L})
        EXPECT_EQ(Grid().OffsetAt(document, Grid().CellCentre(document, offset)), offset);
}

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
