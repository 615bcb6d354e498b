// A menu that opens at a given point and returns the choice.
#pragma once

#include "vetch/interface/BMenu.h"
#include "vetch/support/Geometry.h"

class BPopUpMenu : public BMenu {
public:
    // The two modes are ignored: they are for menus that display a value.
    BPopUpMenu(const char* name, bool radioMode, bool labelFromMarked);

    // Runs the menu at a point of the screen until the user has chosen; null when dismissed. The menu keeps the chosen
    // item. Document thread, no lock held. The three switches are ignored: it never sends the item's message and always
    // waits.
    BMenuItem* Go(BPoint where, bool sendsMessage, bool keepsOpen, bool asynchronous);
};
