// A list from which one item can be selected and invoked.
#pragma once

#include "vetch/app/BInvoker.h"
#include "vetch/interface/BListItem.h"
#include "vetch/interface/BView.h"

#include <vector>

enum list_view_type : long { B_SINGLE_SELECTION_LIST = 0 };

// Does not own its items: neither removal nor the list's destructor deletes them. Same threads as every view.
//
// B_KEY_DOWN: Up and Down move the selection, space and Enter invoke. B_MOUSE_DOWN: selects, a double click invokes.
class BListView : public BView, public BInvoker {
public:
    BListView(BRect frame, const char* name, long type, uint32 resizingMode, uint32 flags);
    ~BListView() override;

    bool AddItem(BListItem* item);       // at the end; false for null
    BListItem* RemoveItem(long index);   // the caller keeps the item; null when there is none
    BListItem* ItemAt(long index) const; // null when there is none
    long CountItems() const;
    void InvalidateItem(long index); // call it when the item's text has changed

    // At most one item is selected, so 'extend' is ignored; an index outside the list selects none.
    void Select(long index, bool extend = false);
    long CurrentSelection() const; // -1 for none

    void SetInvocationMessage(BMessage* message); // takes ownership

    // Posts a copy of 'message', or of its own message for null, with the selected position as "index" (int32). Without
    // a selection there is no "index".
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
