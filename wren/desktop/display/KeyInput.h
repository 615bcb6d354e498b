// What Qt says of keys and the modifiers held, in the words of the host boundary.
#pragma once

#include "vetch/support/Types.h"
#include "wren/core/PluginEvents.h"

#include <Qt>

#include <optional>

class QKeyEvent;
class QKeySequence;

namespace wren {

// Which key of the keyboard stands for which modifier of the plug-in's. The user chooses.
struct ModifierKeys {
    Qt::KeyboardModifier command = Qt::MetaModifier;
    Qt::KeyboardModifier control = Qt::ControlModifier;
    Qt::KeyboardModifier option = Qt::AltModifier;

    bool operator==(const ModifierKeys&) const = default;
};

// The bits, caps lock left out: Qt does not tell of it.
uint32 ModifierBits(Qt::KeyboardModifiers held, const ModifierKeys& keys);

// The key as event 206 tells it; nothing for what is no key stroke, as a modifier alone or a function key. With control
// held the character is the key's own ('.', though Qt says nothing of it).
std::optional<KeyStroke> StrokeOf(const QKeyEvent& event, const ModifierKeys& keys);

// A shortcut of the framework's as Qt writes it in menus; empty for key 0.
QKeySequence SequenceOf(char key, uint32 modifiers, const ModifierKeys& keys);

} // namespace wren
