// Items of lists.
#pragma once

#include "vetch/support/Types.h"

#include <string>

// Plain data. A list view borrows its items: their maker deletes them after removal from the list.
class BListItem {
public:
    explicit BListItem(uint32 level = 0, bool expanded = true);
    BListItem(const BListItem&) = delete;
    BListItem& operator=(const BListItem&) = delete;
    virtual ~BListItem();

    uint32 OutlineLevel() const { return level; }
    bool IsExpanded() const { return expanded; }

private:
    const uint32 level;
    const bool expanded;
};

// An item that shows a text.
class BStringItem : public BListItem {
public:
    explicit BStringItem(const char* text, uint32 level = 0, bool expanded = true); // null is ""
    ~BStringItem() override;

    const char* Text() const { return text.c_str(); } // valid until the next SetText()

    // If a list shows the item, call BListView::InvalidateItem() after this.
    void SetText(const char* newText);

private:
    std::string text;
};
