// The visible state of the headless display: windows, and the lists and controls in them.
#pragma once

#include "vetch/display/Display.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace vetch {

struct ShownList {
    std::vector<std::string> items;
    long selected = -1;
    rgb_color colour;
    bool focus = false;
    BRect frame; // in the window, as for controls
};

struct ShownControl {
    long item = 0;
    ViewDescription::Kind kind = ViewDescription::Kind::Text;
    std::string text; // a text control's text, a button's or check box's label
    bool on = false;  // a check box's value
    long selectionStart = 0;
    long selectionEnd = 0;
    bool focus = false;
    BRect frame;
};

struct ShownWindow {
    long number = 0; // 1, 2, ... in the order of creation; never reused
    LooperToken token = 0;
    std::string title;
    long look = 0;
    uint32 flags = 0;
    bool visible = false;
    bool active = false;
    BRect frame;
    std::array<float, 4> limits{0, 32767, 0, 32767}; // min width, max width, min height, max height
    std::optional<ShownList> list;
    std::vector<ShownControl> controls; // those with an item number, by number; without labels
};

} // namespace vetch
