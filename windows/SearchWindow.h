// Lists the tags that match a looked-up symbol and opens the chosen one in the editor.
#pragma once

#include "vetch/interface/BListItem.h"
#include "vetch/storage/EntryRef.h"
#include "vetch/support/Types.h"
#include "windows/TagWindow.h"

#include <atomic>
#include <string>

// The tag behind a list entry. A value type. A default one does not name a file; its line and kind are 0.
struct DeclarationEntry {
    std::string name;
    std::string qualifier;
    EntryRef file;
    int32 line = 0; // from 1
    char kind = 0;
};

// A list entry that shows one match and keeps its position. Builds its text once (see MatchText).
class LookupItem : public BStringItem {
public:
    LookupItem(const std::string& name, const std::string& qualifier, char kind, int line, const EntryRef& file,
               bool showDirectory);
    ~LookupItem() override;

    const DeclarationEntry& Entry() const { return entry; }

private:
    const DeclarationEntry entry;
};

// Filled once by its creator (the document thread, or the symbol entry dialog's), then shown; from then on it runs on
// its own thread. It closes after one entry has been opened. A creator that does not show it calls Quit().
class SearchWindow : public TagWindow<Tags> {
public:
    // The newest search window, or null. Every search window's destructor clears it. If an older window outlives the
    // creation of a newer one, the newer one is then no longer found here. Windows are destroyed only on the document
    // thread, so a pointer read there stays valid until that thread quits it.
    static std::atomic<SearchWindow*> gSearchWin;

    SearchWindow();
    ~SearchWindow() override;

    // Fills the list with the matches of the symbol of 'tags'; false without any.
    bool PopulateSelf(Tags& tags);
    bool PopulateSelfWithDefinitions(Tags& tags);
    bool PopulateSelfWithDeclarations(Tags& tags);

    // The populators for PopulateList(). They list what CollectMatches() finds.
    void GetAnySymbols(Tags& tags, BListView* into);
    void GetDefinitions(Tags& tags, BListView* into);
    void GetDeclarations(Tags& tags, BListView* into);

    // The tag of 'item'; a default entry for null and for an item without one.
    static void TagFromListItem(const BListItem* item, DeclarationEntry& entry);
    void GetTagEntryAt(DeclarationEntry& entry, long index) const;

    // Adds the entry's file as "refs" and its line as "be:line" to 'message' and posts that to the application. Without
    // such an entry the reference is empty and the line is 0.
    void InvokeAtIndexWithMessage(long index, BMessage& message);

    void MessageReceived(BMessage* message) override;

private:
    void OpenEntry(const BMessage& invocation);
};
