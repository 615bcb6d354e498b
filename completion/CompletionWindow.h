// The pop-up list of candidates for the symbol that is being typed.
#pragma once

#include "windows/TagWindow.h"

class BMessage;

// Completion is not offered yet, so nothing makes this window: gCompletionWindow stays null, and every key goes to the
// document.
class CompletionWindow : public TagWindow<Tags> {
public:
    static CompletionWindow* gCompletionWindow; // the one window, or null. Document thread only

    ~CompletionWindow() override;

    // Offers a key-down message to the window: 2 when it took the key, 0 when it did not or there is no window. Document
    // thread.
    static long RouteKeyboardEventIfNeeded(PluginInterface* host, const BMessage* keyDown);

protected:
    CompletionWindow();
};
