// Key strokes as a script names them, and their effect on a text.
#pragma once

#include "wren/core/PluginEvents.h"

#include <optional>
#include <string>

namespace wren {

class Document;

// 'key' is one character or the name of a key ("enter", "left"); nullopt for any other text.
std::optional<KeyStroke> StrokeOf(const std::string& key, uint32 modifiers);

// The code of a key that a command can be bound to: one byte. nullopt for a key without one.
std::optional<char> CodeOfKey(const std::string& key);

enum class KeyEffect {
    Nothing,
    Typed, // text was inserted
    Edited // text was deleted, or the caret moved or was at its limit
};

// Applies a key that nothing else has handled: characters replace the selection; backspace, delete and the arrows work
// as usual.
KeyEffect ApplyKey(Document& document, const std::string& key, uint32 modifiers);

} // namespace wren
