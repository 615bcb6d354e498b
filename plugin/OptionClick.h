// Option-clicks in the text.
#pragma once

class PluginInterface;

// Closes the pop-ups. If the current click is an option-click, looks up the word under the mouse, reports a finished
// command to the host, and returns true. Document thread.
bool LookUpClickedWord(PluginInterface* host);
