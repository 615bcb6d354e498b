#include "vetch/interface/BScrollView.h"

#include "vetch/interface/BScrollBar.h"

namespace {

BRect WithScrollBars(BRect frame, bool horizontal, bool vertical)
{
    if (vertical)
        frame.right += BScrollBar::MiniScrollBarWidth();
    if (horizontal)
        frame.bottom += BScrollBar::MiniScrollBarWidth();
    return frame;
}

} // namespace

BScrollView::BScrollView(const char* name, BView* target, uint32 resizingMode, uint32 flags, bool horizontal,
                         bool vertical, long /*border*/, bool /*mini*/)
    : BView(WithScrollBars(target->Frame(), horizontal, vertical), name, resizingMode, flags)
{
    target->SetFrame(target->Bounds());
    AddChild(target);
}
