#include "vetch/interface/BScreen.h"

#include "vetch/display/Display.h"

BRect BScreen::MaxWindowFrameWithHint(BPoint hint)
{
    return vetch::CurrentDisplay()->ScreenFrame(hint);
}
