// Scroll bars, as far as layout needs them.
#pragma once

class BScrollBar {
public:
    static float MiniScrollBarWidth(); // pixels, as the display has it. Any thread
};
