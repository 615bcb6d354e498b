// Small services for dialogs.
#pragma once

class BTextControl;

struct DialogHelper {
    // Selects the whole text, under the window's lock; a window that is quitting is left alone.
    static void SelectAll(BTextControl* control);
};
