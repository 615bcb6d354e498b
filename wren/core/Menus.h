// The application's menu bar, with the menu "Search" in which the plug-in puts its commands.
#pragma once

#include "vetch/support/Types.h"

#include <map>
#include <memory>
#include <string>

class BMenu;
class BMenuBar;
class BMenuItem;

namespace wren {

// Gives the bar to be_app, which outlives this. Document thread.
class Menus {
public:
    Menus();
    ~Menus();

    BMenu* Search() const { return search; }

    // Inserts an item that runs 'command' before the one at 'index', or at the end; null without a menu. Key 0 shows no
    // shortcut but keeps its modifiers, which distinguish the items of a dynamic group.
    BMenuItem* AddItem(BMenu* menu, long index, const std::string& label, const std::string& command, char key,
                       uint32 modifiers);

    std::string CommandOf(const BMenuItem* item) const; // "" for an item without one

private:
    std::unique_ptr<BMenuBar> bar;
    BMenu* search; // owned by the bar
    std::map<const BMenuItem*, std::string> commands;
};

} // namespace wren
