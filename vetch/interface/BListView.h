// A list from which one item can be selected and invoked.
#pragma once

#include "vetch/app/BInvoker.h"
#include "vetch/interface/BListItem.h"
#include "vetch/interface/BView.h"

#include <vector>

enum list_view_type : long { B_SINGLE_SELECTION_LIST = 0 };

// Never owns its items: neither taking one out nor the list's end deletes any. Touched as every view.
//
// B_KEY_DOWN: Up and Down move the selection, space and Enter invoke. B_MOUSE_DOWN: selects, a double click invokes.
class BListView : public BView, public BInvoker {
public:
    BListView(BRect frame, const char* name, long type, uint32 resizingMode, uint32 flags);
    ~BListView() override;

    bool AddItem(BListItem* item);       // at the end; false for null
    BListItem* RemoveItem(long index);   // the item, now the caller's to keep; null when there is none
    BListItem* ItemAt(long index) const; // null when there is none
    long CountItems() const;
    void InvalidateItem(long index); // its text has changed

    // One item at most is selected, so 'extend' changes nothing; an index outside the list selects none.
    void Select(long index, bool extend = false);
    long CurrentSelection() const; // -1 when none is

    void SetInvocationMessage(BMessage* message); // takes it over

    // Posts a copy of 'message', or of its own when that is null, with the selection's position as "index" (int32).
    // Nothing selected: without "index".
    status_t Invoke(const BMessage* message = nullptr) override;
    void SetSelectionColor(rgb_color colour);

    void MessageReceived(BMessage* message) override;

protected:
    void AttachedToWindow() override;

private:
    void SetSelection(long index);
    void KeyDown(const BMessage& message);
    void MouseDown(const BMessage& message);
    std::string TextOf(long index) const;

    std::vector<BListItem*> items;
    long selection = -1;
    rgb_color selectionColour{180, 200, 240, 255};
};
