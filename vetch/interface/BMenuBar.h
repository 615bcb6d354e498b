// The menus at the top of the screen or of a window: items with submenus.
#pragma once

#include "vetch/interface/BMenu.h"

class BMenuBar : public BMenu {
public:
    using BMenu::BMenu;
};
