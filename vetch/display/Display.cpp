#include "vetch/display/Display.h"

#include <atomic>

namespace vetch {

namespace {

std::atomic<Display*> gDisplay = nullptr;

} // namespace

Display* CurrentDisplay()
{
    return gDisplay;
}

void SetDisplay(Display* display)
{
    gDisplay = display;
}

} // namespace vetch

void beep()
{
    if (vetch::Display* display = vetch::CurrentDisplay())
        display->Apply(vetch::Beeped());
}
