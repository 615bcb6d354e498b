// A menu that opens where it is asked to, and answers what was chosen.
#pragma once

#include "vetch/interface/BMenu.h"
#include "vetch/support/Geometry.h"

class BPopUpMenu : public BMenu {
public:
    // The modes are for menus that stand for a value; they are kept for the display.
    BPopUpMenu(const char* name, bool radioMode, bool labelFromMarked);

    // Runs the menu at a point of the screen until the user has chosen; null when dismissed. The chosen item still
    // belongs to the menu. Document thread, no lock held. The three switches change nothing: it never sends the item's
    // message and always waits.
    BMenuItem* Go(BPoint where, bool sendsMessage, bool keepsOpen, bool asynchronous);
};
