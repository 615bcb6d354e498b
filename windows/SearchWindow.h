// Lists the tags that match a looked-up symbol and opens the chosen one in the editor.
#pragma once

#include "windows/DeclarationEntry.h"
#include "windows/TagWindow.h"

#include <atomic>

class BListItem;

// Filled once by its creator (the document thread, or the symbol entry dialog's), then shown; from then on it runs on
// its own thread. It closes after one entry has been opened. Its creator gets rid of one that it does not show with
// Quit().
class SearchWindow : public TagWindow<Tags> {
public:
    // The newest search window, or null. Destruction clears it whichever window dies: when an older one outlived the
    // making of a newer one, the newer one is then no longer found here. Windows are destroyed on the document thread
    // alone, so a pointer read there stays good until that thread quits it.
    static std::atomic<SearchWindow*> gSearchWin;

    SearchWindow();
    ~SearchWindow() override;

    // Fill the list with the matches of the symbol for which 'tags' was made; false when there are none.
    bool PopulateSelf(Tags& tags);
    bool PopulateSelfWithDefinitions(Tags& tags);
    bool PopulateSelfWithDeclarations(Tags& tags);

    // The populators for PopulateList(). At most 41 matches are listed, in the order of the tags files.
    void GetAnySymbols(Tags& tags, BListView* into);
    void GetDefinitions(Tags& tags, BListView* into);
    void GetDeclarations(Tags& tags, BListView* into);

    // What 'item' stands for; a default entry when it is null or stands for nothing.
    static void TagFromListItem(const BListItem* item, DeclarationEntry& entry);
    void GetTagEntryAt(DeclarationEntry& entry, long index) const;

    // Adds the entry's file as "refs" and its line as "be:line" to 'message' and posts that to the application. Where
    // there is no such entry it is posted all the same, with an empty reference and line 0.
    void InvokeAtIndexWithMessage(long index, BMessage& message);

    void MessageReceived(BMessage* message) override;

private:
    template <class Match>
    void GetSymbolsCommon(Tags& tags, BListView* into);
    void OpenEntry(const BMessage& invocation);
};
