// The pop-up list that every result list of the plug-in is built on.
#pragma once

#include "vetch/interface/BListView.h"
#include "vetch/interface/BWindow.h"
#include "windows/WindowSection.h"

class PluginInterface;
class Tags;

// One single-selection list in a window that never takes the keyboard from the document. It is as wide as its widest
// entry and as high as its entries, up to eight of them, and stands next to the document's caret.
//
// Made hidden; construct, PopulateList(), then ShowAt(). Its creator has it alone until then; later calls take the
// window's lock for their duration and do nothing once the window has been quit. Entries are BStringItems, and the
// window deletes those that it removes and those left when it dies.
template <class TagSet>
class TagWindow : public BWindow {
public:
    // 'command' is the code of the message that the list sends to this window when an entry is invoked. 'resizable'
    // gives a floating window with a permanent scroll bar; without it, a bordered one that shows a scroll bar when it
    // needs it.
    TagWindow(const char* title, bool resizable, uint32 command);
    ~TagWindow() override;

    // Below the text at 'offset' of the current document, or above it where there is no room below. Document thread.
    void ShowAt(const PluginInterface* host, long offset);
    void ShowAt(const BPoint& where); // a point of the screen; any thread

    // Moves a shown window to another offset and keeps its left edge, so that it stands still while its user types.
    // Document thread.
    void RepositionAt(const PluginInterface* host, long offset);

    // Resizes the window to its entries and bounds later resizes by the user. Inside a section, or before it is shown.
    void FitList();

    // Empties the list, lets 'populate' fill it, and fits the window. False when nothing was added: the window then
    // keeps its old size. Never shows it.
    template <class Populator>
    bool PopulateList(Populator& populator, TagSet& tags, void (Populator::*populate)(TagSet&, BListView*));

    long CountEntries() const { return list->CountItems(); } // inside a section, or before it is shown

protected:
    BListView* List() const { return list; }

private:
    void DeleteEntries();
    float WidestEntry() const;
    float LineHeight() const;

    BListView* list; // owned by the view tree
    const bool resizable;
};

template <class TagSet>
template <class Populator>
bool TagWindow<TagSet>::PopulateList(Populator& populator, TagSet& tags,
                                     void (Populator::*populate)(TagSet&, BListView*))
{
    const WindowSection section(*this);
    if (!section)
        return false;
    DeleteEntries();
    (populator.*populate)(tags, list);
    if (list->CountItems() < 1)
        return false;
    FitList();
    return true;
}

extern template class TagWindow<Tags>;
