#include "vetch/interface/BMenu.h"

#include <algorithm>

BMenu::BMenu(const char* name) : name(name == nullptr ? "" : name) {}

BMenu::~BMenu() = default;

bool BMenu::AddItem(BMenuItem* item)
{
    return AddItem(item, CountItems());
}

bool BMenu::AddItem(BMenuItem* item, long index)
{
    if (item == nullptr)
        return false;
    const bool inside = index >= 0 && index < CountItems();
    items.emplace(inside ? items.begin() + index : items.end(), item);
    return true;
}

bool BMenu::AddSeparatorItem()
{
    return AddItem(new BMenuItem("", nullptr));
}

long BMenu::CountItems() const
{
    return static_cast<long>(items.size());
}

BMenuItem* BMenu::ItemAt(long index) const
{
    return index < 0 || index >= CountItems() ? nullptr : items[index].get();
}

long BMenu::IndexOf(const BMenuItem* item) const
{
    const auto found = std::ranges::find(items, item, [](const auto& owned) { return owned.get(); });
    return found == items.end() ? -1 : found - items.begin();
}

BMenuItem* BMenu::FindItem(const char* label) const
{
    const auto found = std::ranges::find_if(
        items, [label](const auto& item) { return !item->IsSeparator() && item->Label() == label; });
    return found == items.end() ? nullptr : found->get();
}

void BMenu::SetFont(const BFont* newFont)
{
    font = *newFont;
}

// Items are defined here: menus own items, and an item may own a menu.

BMenuItem::BMenuItem(const char* label, BMessage* message, char key, uint32 modifiers)
    : label(label == nullptr ? "" : label), message(message), key(key), modifiers(modifiers)
{
}

BMenuItem::BMenuItem(BMenu* submenu) : label(submenu->Name()), submenu(submenu) {}

BMenuItem::~BMenuItem() = default;

void BMenuItem::SetShortcut(char newKey, uint32 newModifiers)
{
    key = newKey;
    modifiers = newModifiers;
}
