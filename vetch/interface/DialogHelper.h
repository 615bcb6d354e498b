// Helpers for dialogs.
#pragma once

class BTextControl;

struct DialogHelper {
    // Selects the whole text, under the window's lock; does nothing when the window is quitting.
    static void SelectAll(BTextControl* control);
};
