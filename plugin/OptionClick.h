// Option-clicks in the text.
#pragma once

class PluginInterface;

// Closes the pop-ups; then, if the click that is happening asks for it, looks up the word under the mouse and tells the
// host that a command is done. True when it did. Document thread.
bool LookUpClickedWord(PluginInterface* host);
