// A menu that opens where it is asked to, and answers what was chosen.
#pragma once

#include "vetch/interface/BMenu.h"
#include "vetch/support/Geometry.h"

class BPopUpMenu : public BMenu {
public:
    // The two modes are for menus that stand for a value; this one only asks, so they change nothing.
    BPopUpMenu(const char* name, bool radioMode, bool labelFromMarked);

    // Runs the menu at a point of the screen until the user has chosen; null when dismissed. The chosen item still
    // belongs to the menu. Document thread, no lock held. The three switches change nothing: it never sends the item's
    // message and always waits.
    BMenuItem* Go(BPoint where, bool sendsMessage, bool keepsOpen, bool asynchronous);
};
