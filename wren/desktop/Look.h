// What the preferences mean for Qt.
#pragma once

#include "wren/core/CommandTable.h"
#include "wren/core/Preferences.h"
#include "wren/desktop/display/KeyInput.h"
#include "wren/desktop/editor/EditorLook.h"

#include <optional>
#include <string>

namespace wren {

EditorLook LookFor(const PreferenceValues& values, int zoom); // zoom in points, on top of the font's size
ModifierKeys KeysFor(const PreferenceValues& values);
void ApplyColours(PreferenceValues::Colours colours); // to the whole application

// A key with a character, or a function key, as the core knows it; absent for other keys, or several strokes.
std::optional<KeyBinding> BindingFrom(const std::string& key, const ModifierKeys& keys);

} // namespace wren
