// The pop-up list of candidates for the symbol being typed.
#pragma once

#include "windows/TagWindow.h"

#include <atomic>

class BMessage;
class PluginInterface;

// The document keeps the keyboard. The document thread offers each key stroke to the window first
// (RouteKeyboardEventIfNeeded); the window takes keys that move in its list or choose from it. The choice is posted to
// the document as 'ksel' with the string "completion", and the window closes.
//
// Runs on its own thread. The document thread reaches the list only by posted messages; both threads change only
// 'focused'.
class CompletionWindow : public TagWindow<Tags> {
public:
    static CompletionWindow* gCompletionWindow; // the one window, or null. Document thread only

    // 'documentID': the document at whose caret it stands and that gets the choice. The key that chooses is the host's
    // current binding of "SymbolCompletion".
    CompletionWindow(PluginInterface* host, long documentID);
    ~CompletionWindow() override;

    // Whether keys go to the list; the selection's colour shows it. Any thread, with no lock held but the window's.
    void SetFocus(bool focused);

    // True for a key-down message of the completion shortcut; additional modifiers are ignored.
    bool IsInvokeShortcutEvent(const BMessage* keyDown) const;

    void DispatchMessage(BMessage* message, BHandler* handler) override;
    void MessageReceived(BMessage* message) override;

    bool RouteKeyboardEvent(BMessage* keyDown); // true when the list took the key. Document thread

    // Offers a key-down message to the window: 2 when it took the key; 0 when it did not, or without a window. Document
    // thread.
    static long RouteKeyboardEventIfNeeded(PluginInterface* host, const BMessage* keyDown);

private:
    void Choose(const BMessage& pick);

    const long documentID;
    char shortcutKey = 0;
    uint32 shortcutModifiers = 0;
    std::atomic<bool> focused = false;
    bool hasChosen = false; // for the window's thread only
};
