// A menu.
#pragma once

#include "vetch/interface/BFont.h"
#include "vetch/interface/BMenuItem.h"

#include <memory>
#include <string>
#include <vector>

// Document thread only. Owns its items.
class BMenu {
public:
    explicit BMenu(const char* name);
    BMenu(const BMenu&) = delete;
    BMenu& operator=(const BMenu&) = delete;
    virtual ~BMenu();

    const std::string& Name() const { return name; }

    bool AddItem(BMenuItem* item);             // at the end; takes ownership. False for null
    bool AddItem(BMenuItem* item, long index); // before the item there; at the end when there is none
    bool AddSeparatorItem();
    long CountItems() const;
    BMenuItem* ItemAt(long index) const;          // null when there is none
    long IndexOf(const BMenuItem* item) const;    // -1 when it is not in this menu
    BMenuItem* FindItem(const char* label) const; // the first in this menu, submenus excluded; null for none
    void SetFont(const BFont* newFont);
    const BFont& Font() const { return font; }

private:
    const std::string name;
    std::vector<std::unique_ptr<BMenuItem>> items;
    BFont font;
};
