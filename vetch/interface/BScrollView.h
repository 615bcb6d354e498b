// A view that scrolls another.
#pragma once

#include "vetch/interface/BView.h"

// Takes its target over as its one child. It covers the target's frame, widened at the right and at the bottom by the
// scroll bars it was asked for; borders take no room.
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
