// Key strokes as a script names them, and what they do to a text.
#pragma once

#include "wren/core/PluginEvents.h"

#include <optional>
#include <string>

namespace wren {

class Document;

// 'key' is one character or the name of a key ("enter", "left"); nothing for any other text.
std::optional<KeyStroke> StrokeOf(const std::string& key, uint32 modifiers);

// The code of a key that a command can be bound to: one byte; nothing for a key that has none.
std::optional<char> CodeOfKey(const std::string& key);

enum class KeyEffect {
    Nothing,
    Typed, // text was put in
    Edited // text was taken out, or the caret moved or tried to
};

// What a key that nobody else wanted does: characters replace the selection, backspace, delete and the arrows do what
// they do everywhere.
KeyEffect ApplyKey(Document& document, const std::string& key, uint32 modifiers);

} // namespace wren
