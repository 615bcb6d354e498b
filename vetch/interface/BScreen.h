// Screens.
#pragma once

#include "vetch/support/Geometry.h"

class BScreen {
public:
    // The usable frame of the screen that holds 'hint'. A snapshot; any thread.
    static BRect MaxWindowFrameWithHint(BPoint hint);
};
