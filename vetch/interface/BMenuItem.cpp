#include "vetch/interface/BMenuItem.h"

#include "vetch/interface/BMenu.h"

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
