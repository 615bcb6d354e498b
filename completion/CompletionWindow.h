// The pop-up list of candidates for the symbol that is being typed.
#pragma once

#include "windows/TagWindow.h"

#include <atomic>

class BMessage;
class PluginInterface;

// The document keeps the keyboard while it is open: the document thread offers it each key stroke first
// (RouteKeyboardEventIfNeeded), and the window takes those that move in its list or choose from it. What is chosen is
// posted back to the document as 'ksel' with the string "completion", and the window closes.
//
// Runs on its own thread. The document thread reaches the list only by posting messages to it; 'focused' is all that
// both threads change.
class CompletionWindow : public TagWindow<Tags> {
public:
    static CompletionWindow* gCompletionWindow; // the one window, or null. Document thread only

    // 'documentID' is whose caret it stands at and who gets the choice. The key that chooses an entry is the one that
    // the host has bound to "SymbolCompletion" now.
    CompletionWindow(PluginInterface* host, long documentID);
    ~CompletionWindow() override;

    // Whether keys go to the list, which its selection's colour shows. Any thread, no lock held but the window's own.
    void SetFocus(bool focused);

    // Whether a key-down message is the completion shortcut; modifiers besides the shortcut's do not matter.
    bool IsInvokeShortcutEvent(const BMessage* keyDown) const;

    void DispatchMessage(BMessage* message, BHandler* handler) override;
    void MessageReceived(BMessage* message) override;

    bool RouteKeyboardEvent(BMessage* keyDown); // true when the key was taken for the list. Document thread

    // Offers a key-down message to the window: 2 when it took the key, 0 when it did not or there is no window.
    // Document thread.
    static long RouteKeyboardEventIfNeeded(PluginInterface* host, const BMessage* keyDown);

private:
    void Choose(const BMessage& pick);

    const long documentID;
    char shortcutKey = 0;
    uint32 shortcutModifiers = 0;
    std::atomic<bool> focused = false;
    bool hasChosen = false; // the window's thread alone
};
