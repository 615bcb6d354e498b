// The base of the plug-in's pop-up lists, and the scopes in which its users reach the list.
#pragma once

#include "vetch/app/BLooper.h"
#include "vetch/interface/BListView.h"
#include "vetch/interface/BWindow.h"
#include "vetch/interface/Carbon.h"

class BView;
class PluginInterface;
class Tags;

// One operation on a window's model, on any thread. Before a window is first shown, only its creator uses it, without a
// lock; afterwards a section holds the lock. A section that does not open belongs to a window that has quit: do not use
// the window.
//
// Keep sections short: no waits, no modal questions and no Quit() inside.
class WindowSection {
public:
    explicit WindowSection(BLooper& window) : window(window), running(window.HasRun()), open(!running || window.Lock())
    {
    }
    ~WindowSection()
    {
        if (running && open)
            window.Unlock();
    }
    WindowSection(const WindowSection&) = delete;
    WindowSection& operator=(const WindowSection&) = delete;

    explicit operator bool() const { return open; }

private:
    BLooper& window;
    const bool running; // at the section's start: the first Show() may happen inside it
    const bool open;
};

// Makes a view's drawing port the current one for a scope. Text is measured for the calling thread's
// current port. The view must be in a window.
class PortSetter {
public:
    explicit PortSetter(BView* view);
    ~PortSetter();
    PortSetter(const PortSetter&) = delete;
    PortSetter& operator=(const PortSetter&) = delete;

private:
    GrafPtr saved = nullptr;
};

// A single-selection list in a window that never takes the keyboard from the document. It is as wide as its widest
// entry, as high as its entries, up to eight of them, and stands next to the document's caret.
//
// Made hidden; construct, PopulateList(), then ShowAt(). Until then only its creator uses it; later calls lock the
// window and do nothing after its quit. Entries are BStringItems; the window deletes those that it removes and the rest
// in its destructor.
template <class TagSet>
class TagWindow : public BWindow {
public:
    // The list sends the message 'command' to this window when an entry is invoked. 'resizable' gives a floating window
    // with a permanent scroll bar; otherwise it is bordered and shows a scroll bar when it needs one.
    TagWindow(const char* title, bool resizable, uint32 command);
    ~TagWindow() override;

    // Below the text at 'offset' of the current document, or above it when there is no room below. Document thread.
    void ShowAt(const PluginInterface* host, long offset);
    void ShowAt(const BPoint& where); // a point of the screen; any thread

    // Moves a shown window to another offset but keeps its left edge, so that it stands still while the user types.
    // Document thread.
    void RepositionAt(const PluginInterface* host, long offset);

    // Resizes the window to its entries and limits later resizes by the user. Call it in a section or before the window
    // is shown.
    void FitList();

    // Empties the list, calls 'populate' and fits the window. False when nothing was added: the window then keeps its
    // size. Never shows it.
    template <class Populator>
    bool PopulateList(Populator& populator, TagSet& tags, void (Populator::*populate)(TagSet&, BListView*));

    long CountEntries() const { return list->CountItems(); } // in a section or before the window is shown

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
