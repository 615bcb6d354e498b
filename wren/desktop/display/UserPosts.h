// The messages that tell the framework what the user did.
#pragma once

#include "vetch/app/BHandler.h"
#include "vetch/support/Geometry.h"

#include <string>
#include <vector>

namespace wren {

struct KeyStroke;

// What a text field holds after the user's edit, in bytes of UTF-8.
struct TextEdit {
    std::string text;
    long start = 0; // of the selection
    long end = 0;
};

// All answer false when nobody is left to hear it. Any thread.
bool PostMouseDown(vetch::HandlerToken list, long index, int clicks);
bool PostKeyDown(vetch::HandlerToken list, const KeyStroke& key);
bool PostPressed(vetch::HandlerToken button);
bool PostChecked(vetch::HandlerToken box, bool on);
bool PostTextEdited(vetch::HandlerToken control, const TextEdit& edit);
bool PostTextEntered(vetch::HandlerToken control, const TextEdit& edit);
bool PostFrameChanged(vetch::HandlerToken window, const BRect& frame);
bool PostActivated(vetch::HandlerToken window, bool active);
bool PostQuitRequested(vetch::HandlerToken window);
bool PostPanelDone(vetch::HandlerToken panel, const std::vector<std::string>& paths); // none: dismissed

} // namespace wren
