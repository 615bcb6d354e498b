// The parts of a view that use its window, kept apart because windows consist of views.
#include "vetch/display/Display.h"
#include "vetch/interface/BView.h"
#include "vetch/interface/BWindow.h"

void BView::MakeFocus(bool focus)
{
    if (window == nullptr)
        return;
    if (focus)
        window->SetFocus(this);
    else if (window->FocusView() == this)
        window->SetFocus(nullptr);
}

vetch::ViewDescription BView::Description() const
{
    vetch::ViewDescription description;
    description.window = window->LooperToken();
    description.view = Token();
    description.item = item;
    description.frame = FrameInWindow();
    description.fontSize = font.Size();
    description.followsWindow = resizingMode == B_FOLLOW_ALL_SIDES;
    return description;
}

void BView::Join(BWindow* newWindow)
{
    window = newWindow;
    SetLooper(newWindow);
    AttachedToWindow();
    for (const auto& child : children)
        child->Join(newWindow);
}
