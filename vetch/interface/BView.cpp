#include "vetch/interface/BView.h"

#include "vetch/display/Display.h"
#include "vetch/interface/NibControls.h"

namespace {

BRect MovedBy(BRect rect, float x, float y)
{
    return {rect.left + x, rect.top + y, rect.right + x, rect.bottom + y};
}

} // namespace

BView::BView() = default;

BView::BView(BRect frame, const char* name, uint32 resizingMode, uint32 /*flags*/)
    : frame(frame), name(name == nullptr ? "" : name), resizingMode(resizingMode)
{
}

BView::~BView() = default;

BRect BView::Bounds() const
{
    return {0, 0, frame.Width(), frame.Height()};
}

BRect BView::Frame() const
{
    return frame;
}

void BView::AddChild(BView* child)
{
    if (child == nullptr)
        return;
    children.emplace_back(child);
    child->parent = this;
    if (window != nullptr)
        child->Join(window);
}

void BView::AddChildFromNib(BView* child, long number)
{
    if (child == nullptr)
        return;
    const vetch::NibControl* control = nib == nullptr ? nullptr : nib->Find(number);
    if (control == nullptr || !child->SetUpFromNib(*control)) {
        unattached.emplace_back(child);
        return;
    }
    child->item = number;
    child->frame = control->frame;
    nib->Take(number);
    AddChild(child);
}

void BView::SetFont(const BFont* newFont)
{
    font = *newFont;
}

void BView::GetFont(BFont* copy) const
{
    *copy = font;
}

float BView::StringWidth(const char* text) const
{
    return text == nullptr ? 0 : vetch::CurrentDisplay()->StringWidth(text, font.Size());
}

void BView::AttachedToWindow() {}

bool BView::SetUpFromNib(const vetch::NibControl&)
{
    return false;
}

BRect BView::FrameInWindow() const
{
    BRect inWindow = frame;
    for (const BView* ancestor = parent; ancestor != nullptr; ancestor = ancestor->parent)
        inWindow = MovedBy(inWindow, ancestor->frame.left, ancestor->frame.top);
    return inWindow;
}

void BView::SetFrame(BRect newFrame)
{
    const float widthChange = newFrame.Width() - frame.Width();
    const float heightChange = newFrame.Height() - frame.Height();
    frame = newFrame;
    if (window != nullptr)
        vetch::CurrentDisplay()->Apply(vetch::ViewMoved{Token(), FrameInWindow()});
    for (const auto& child : children)
        child->ParentChanged(widthChange, heightChange);
}

void BView::ParentChanged(float widthChange, float heightChange)
{
    BRect newFrame = frame;
    if (resizingMode == B_FOLLOW_ALL_SIDES) {
        newFrame.right += widthChange;
        newFrame.bottom += heightChange;
    }
    SetFrame(newFrame); // even if equal: when the parent has moved, this view has moved in the window
}
