// A view that scrolls another.
#pragma once

#include "vetch/interface/BView.h"

// Owns its target, which is its only child. Covers the target's frame plus the requested scroll bars at the right and
// at the bottom; borders add nothing.
class BScrollView : public BView {
public:
    BScrollView(const char* name, BView* target, uint32 resizingMode, uint32 flags, bool horizontal, bool vertical,
                long border, bool mini);

    void SetResizeCorner(bool on) { resizeCorner = on; }
    bool HasResizeCorner() const { return resizeCorner; }
    void SetAutoHideScrollBars(bool on) { autoHide = on; }
    bool AutoHidesScrollBars() const { return autoHide; }

private:
    bool resizeCorner = false;
    bool autoHide = false;
};
