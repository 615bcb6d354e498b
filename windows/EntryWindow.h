// The dialog for typing a symbol to look up.
#pragma once

#include "vetch/interface/BWindow.h"
#include "vetch/storage/BEntry.h"

class BTextControl;
class PluginInterface;

// There is at most one. Made on first use, it keeps the tags files of the document for which it was made. Its buttons
// hide it; it lives until the window quits. It runs on its own thread.
class EntryWindow : public BWindow {
public:
    static EntryWindow* gEntryWin; // the dialog, or null. Document thread only

    // Uses the window named 'window' of the interface file 'nib'; copies the two entries.
    EntryWindow(__CFBundle* bundle, const char* nib, const char* window, const BEntry* localTags,
                const BEntry* systemTags);
    ~EntryWindow() override;

    // Makes and shows the dialog, or brings the existing one to the front with its text selected. An existing dialog
    // keeps its first tags files and ignores the entries given. Returns the dialog, even if it quit meanwhile and is
    // not shown. Document thread.
    static EntryWindow* CreateOrShow(PluginInterface* host, const BEntry* localTags, const BEntry* systemTags);

    void MessageReceived(BMessage* message) override;

private:
    void AddButton(long item, uint32 command);
    void LookUp();

    BTextControl* symbol; // owned by the view tree
    const BEntry localTags;
    const BEntry systemTags;
};
