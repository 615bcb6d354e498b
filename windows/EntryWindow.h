// The dialog in which a symbol is typed in order to look it up.
#pragma once

#include "vetch/interface/BWindow.h"
#include "vetch/storage/BEntry.h"

class BTextControl;
class PluginInterface;

// There is at most one. It is made on first use and keeps the tags files of the document for which it was made; its
// buttons hide it, and it lives on until the window is quit. It runs on its own thread.
class EntryWindow : public BWindow {
public:
    static EntryWindow* gEntryWin; // the dialog, or null. Document thread only

    // Takes the window named 'window' of the interface file 'nib'; copies the two entries.
    EntryWindow(__CFBundle* bundle, const char* nib, const char* window, const BEntry* localTags,
                const BEntry* systemTags);
    ~EntryWindow() override;

    // Makes and shows the dialog, or brings the existing one to the front with its text selected. An existing dialog
    // goes on looking into the tags files it was made with: the entries given are not used then. Answers the dialog,
    // also when it was quit meanwhile and nothing is shown. Document thread.
    static EntryWindow* CreateOrShow(PluginInterface* host, const BEntry* localTags, const BEntry* systemTags);

    void MessageReceived(BMessage* message) override;

private:
    void AddButton(long item, uint32 command);
    void LookUp();

    BTextControl* symbol; // owned by the view tree
    const BEntry localTags;
    const BEntry systemTags;
};
