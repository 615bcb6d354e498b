// One line of a menu.
#pragma once

#include "vetch/app/BMessage.h"
#include "vetch/support/Types.h"

#include <memory>
#include <string>

class BMenu;

// Document thread only. Owned by the menu it was added to.
class BMenuItem {
public:
    // Takes ownership of 'message'. Key 0 means no shortcut; its modifiers are kept. An empty label means a separator.
    BMenuItem(const char* label, BMessage* message, char key = 0, uint32 modifiers = 0);
    explicit BMenuItem(BMenu* submenu); // takes ownership; uses the submenu's name as its label
    BMenuItem(const BMenuItem&) = delete;
    BMenuItem& operator=(const BMenuItem&) = delete;
    ~BMenuItem();

    const std::string& Label() const { return label; }
    const BMessage* Message() const { return message.get(); }
    BMenu* Submenu() const { return submenu.get(); }
    bool IsSeparator() const { return label.empty(); }

    void SetShortcut(char newKey, uint32 newModifiers);
    char Shortcut() const { return key; }
    uint32 ShortcutModifiers() const { return modifiers; }
    void SetEnabled(bool on) { enabled = on; }
    bool IsEnabled() const { return enabled; }

    // Starts a group of adjacent items; the user sees the one whose modifiers are held.
    void SetStartDynamic() { startDynamic = true; }
    bool IsStartDynamic() const { return startDynamic; }
    void SetDynamic() { dynamic = true; }
    bool IsDynamic() const { return dynamic; }

private:
    const std::string label;
    const std::unique_ptr<BMessage> message;
    const std::unique_ptr<BMenu> submenu;
    char key = 0;
    uint32 modifiers = 0;
    bool enabled = true;
    bool startDynamic = false;
    bool dynamic = false;
};
