#include "wren/desktop/display/KeyInput.h"

#include "vetch/app/Modifiers.h"

#include <QKeyEvent>
#include <QKeySequence>

#include <gtest/gtest.h>

namespace {

using wren::ModifierKeys;
using wren::StrokeOf;

struct Case {
    const char* why;
    int key;
    Qt::KeyboardModifiers held;
    const char* text;  // as Qt tells it
    std::string bytes; // "" for no stroke
    uint32 modifiers;
};
const Case kCases[] = {
    {"a letter", Qt::Key_A, Qt::NoModifier, "a", "a", 0},
    {"a capital", Qt::Key_A, Qt::ShiftModifier, "A", "A", B_SHIFT_KEY},
    {"a letter of two bytes", 0xE4, Qt::NoModifier, "ä", "ä", 0},
    {"a character beyond 16 bits", 0, Qt::NoModifier, "😀", "😀", 0},
    {"space", Qt::Key_Space, Qt::NoModifier, " ", " ", 0},
    {"with control Qt tells a control code", Qt::Key_J, Qt::ControlModifier, "\n", "j", B_CONTROL_KEY},
    {"with control Qt says nothing", Qt::Key_Period, Qt::ControlModifier, "", ".", B_CONTROL_KEY},
    {"with control and shift the key's own", Qt::Key_Greater, Qt::ControlModifier | Qt::ShiftModifier, "", ".",
     B_CONTROL_KEY | B_SHIFT_KEY},
    {"with control a letter stays small", Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier, "", "a",
     B_CONTROL_KEY | B_SHIFT_KEY},
    {"with control on a keyboard without Latin letters", 0x421, Qt::ControlModifier, "\x03", "c", B_CONTROL_KEY},
    {"with control, a space", Qt::Key_Space, Qt::ControlModifier, "", " ", B_CONTROL_KEY},
    {"with option the character stays", Qt::Key_X, Qt::AltModifier, "x", "x", B_OPTION_KEY},
    {"with command too", Qt::Key_X, Qt::MetaModifier, "", "x", B_COMMAND_KEY},
    {"the keypad's digits are digits", Qt::Key_5, Qt::KeypadModifier, "5", "5", 0},
    {"backspace", Qt::Key_Backspace, Qt::NoModifier, "\b", "\b", 0},
    {"tab", Qt::Key_Tab, Qt::NoModifier, "\t", "\t", 0},
    {"tab with shift", Qt::Key_Backtab, Qt::ShiftModifier, "", "\t", B_SHIFT_KEY},
    {"return", Qt::Key_Return, Qt::NoModifier, "\r", "\n", 0},
    {"the keypad's enter", Qt::Key_Enter, Qt::KeypadModifier, "\r", "\n", 0},
    {"escape", Qt::Key_Escape, Qt::NoModifier, "\x1b", "\x1b", 0},
    {"left", Qt::Key_Left, Qt::NoModifier, "", "\x1c", 0},
    {"right", Qt::Key_Right, Qt::NoModifier, "", "\x1d", 0},
    {"up", Qt::Key_Up, Qt::NoModifier, "", "\x1e", 0},
    {"down with control", Qt::Key_Down, Qt::ControlModifier, "", "\x1f", B_CONTROL_KEY},
    {"delete", Qt::Key_Delete, Qt::NoModifier, "\x7f", "\x7f", 0},
    {"a modifier alone is none", Qt::Key_Shift, Qt::ShiftModifier, "", "", 0},
    {"a function key is none", Qt::Key_F5, Qt::NoModifier, "", "", 0},
    {"an accent that waits for its letter is none", Qt::Key_Dead_Acute, Qt::NoModifier, "", "", 0},
};
TEST(StrokeOf, Cases)
{
    for (const Case& c : kCases) {
        const QKeyEvent event(QEvent::KeyPress, c.key, c.held, QString::fromUtf8(c.text));
        const auto stroke = StrokeOf(event, ModifierKeys());
        ASSERT_EQ(stroke.has_value(), !c.bytes.empty()) << c.why;
        if (!stroke)
            continue;
        EXPECT_EQ(stroke->bytes, c.bytes) << c.why;
        EXPECT_EQ(stroke->modifiers, c.modifiers) << c.why;
    }
}

TEST(StrokeOf, FollowsTheUsersChoiceOfModifiers)
{
    const ModifierKeys swapped = {.command = Qt::ControlModifier, .control = Qt::MetaModifier};
    const QKeyEvent event(QEvent::KeyPress, Qt::Key_Greater, Qt::ControlModifier | Qt::ShiftModifier, "");
    EXPECT_EQ(StrokeOf(event, swapped)->bytes, ">"); // only control takes shift away
    EXPECT_EQ(StrokeOf(event, swapped)->modifiers, B_COMMAND_KEY | B_SHIFT_KEY);
}

TEST(SequenceOf, WritesShortcutsAsQtDoes)
{
    const ModifierKeys keys;
    EXPECT_EQ(wren::SequenceOf('k', B_CONTROL_KEY, keys), QKeySequence("Ctrl+K"));
    EXPECT_EQ(wren::SequenceOf('.', B_CONTROL_KEY | B_OPTION_KEY, keys), QKeySequence("Ctrl+Alt+."));
    EXPECT_EQ(wren::SequenceOf('\n', B_COMMAND_KEY | B_SHIFT_KEY, keys), QKeySequence("Meta+Shift+Return"));
    EXPECT_EQ(wren::SequenceOf(wren::KeyCode::OfFunctionKey(1), 0, keys), QKeySequence("F1"));
    EXPECT_EQ(wren::SequenceOf(wren::KeyCode::OfFunctionKey(12), B_CONTROL_KEY, keys), QKeySequence("Ctrl+F12"));
    EXPECT_TRUE(wren::SequenceOf(0, B_COMMAND_KEY, keys).isEmpty());
}

} // namespace
