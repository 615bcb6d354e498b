// Keys in a document: which ones open completions while typing, and which ones close pop-ups.
#pragma once

class PluginInterface;

// The identifier before the caret at key down; all 0 without one and with automatic completion off. Document thread
// only.
extern long gPreKeyDownSelStart;
extern long gPreKeyDownPatternStart;
extern long gPreKeyDownPatternSize;

// Set during the named completion command's own edit, which must not close the list that it has opened.
extern bool gHandlingAutoCompletePrimitive;

// Event handlers; results as for PluginMain.
long KeyDown(PluginInterface* host);              // before the host applies the key
long KeyTyped(PluginInterface* host);             // after a key that types text
long EditingPrimitiveDone(PluginInterface* host); // after any other editing or moving key, and after commands
