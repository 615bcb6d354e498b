#include "vetch/interface/BScrollBar.h"

#include "vetch/display/Display.h"

float BScrollBar::MiniScrollBarWidth()
{
    return vetch::CurrentDisplay()->MiniScrollBarWidth();
}
