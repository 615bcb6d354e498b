// Scroll bars, for layout only.
#pragma once

class BScrollBar {
public:
    static float MiniScrollBarWidth(); // pixels, from the display. Any thread
};
