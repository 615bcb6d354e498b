// What lists hold.
#pragma once

#include "vetch/support/Types.h"

#include <string>

// Plain data. A list view borrows its items: whoever made one deletes it, after taking it out.
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

    const char* Text() const { return text.c_str(); } // until the next SetText()

    // A list that already shows the item learns of it by BListView::InvalidateItem().
    void SetText(const char* newText);

private:
    std::string text;
};
