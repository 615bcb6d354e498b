// Keys in a document: which of them let completion pop up while typing, and which close what has popped up.
#pragma once

class PluginInterface;

// What stood before the caret when the key went down; all 0 without an identifier there, and with automatic completion
// off. Document thread only.
extern long gPreKeyDownSelStart;
extern long gPreKeyDownPatternStart;
extern long gPreKeyDownPatternSize;

// Set while the named completion command's own edit is under way, which is not to close the list it has opened.
extern bool gHandlingAutoCompletePrimitive;

// Event handlers; they answer as PluginMain does.
long KeyDown(PluginInterface* host);              // before the host applies the key
long KeyTyped(PluginInterface* host);             // after a key that types text
long EditingPrimitiveDone(PluginInterface* host); // after a key that edits or moves otherwise, and after commands
