#include "vetch/interface/BWindow.h"

#include "vetch/display/Display.h"
#include "vetch/interface/NibControls.h"
#include "vetch/support/ThreadStart.h"

namespace {

// Stands for a window whose file cannot be read: it can be seen, moved and closed.
const vetch::NibPart kEmptyWindow = {.title = "", .frame = {100, 100, 400, 200}, .controls = {}};

float IntField(const BMessage& message, const char* name, float missing)
{
    int32 value = 0;
    return message.FindInt32(name, &value) == B_OK ? static_cast<float>(value) : missing;
}

} // namespace

BWindow::BWindow(BRect frame, const char* title, long look, long /*feel*/, uint32 flags, vetch::Service service,
                 vetch::ShownBy shownBy)
    : BLooper(service), frame(frame), title(title == nullptr ? "" : title), flags(flags),
      root(std::make_unique<BView>(Bounds(), "root", B_FOLLOW_ALL_SIDES, 0))
{
    vetch::WindowDescription description;
    description.window = LooperToken();
    description.handler = Token();
    description.title = this->title;
    description.frame = frame;
    description.look = look;
    description.flags = flags;
    description.ofPlugin = shownBy == vetch::ShownBy::Display;
    vetch::CurrentDisplay()->Apply(vetch::WindowMade{description});
    root->Join(this);
}

BWindow::BWindow(__CFBundle* bundle, const char* nib, const char* window)
    : BWindow(vetch::ReadNibPart(bundle, nib, window).value_or(kEmptyWindow))
{
}

BWindow::BWindow(const vetch::NibPart& part)
    : BWindow(part.frame, part.title.c_str(), B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, 0)
{
    vetch::NibControls::Lay(*root, part);
}

BWindow::~BWindow()
{
    // For a window deleted without a quit.
    vetch::CurrentDisplay()->Apply(vetch::WindowClosed{LooperToken()});
}

void BWindow::Show()
{
    // Once it runs, any thread may quit it: the lock keeps it alive until the end of this function.
    const bool locked = Lock();
    // After an accepted quit it does not run; the document thread owns it and may have destroyed it. A window that gets
    // no thread is left to the document thread too: its maker does not use it again.
    const thread_id thread = Run();
    if (thread == vetch::kNotStarted)
        QuitUnrun();
    const bool runs = thread > 0;
    if (runs && hidden) {
        hidden = false;
        vetch::CurrentDisplay()->Apply(vetch::WindowShown{LooperToken()});
    }
    if (locked)
        Unlock();
}

void BWindow::Hide()
{
    if (hidden)
        return;
    hidden = true;
    SetActive(false);
    vetch::CurrentDisplay()->Apply(vetch::WindowHidden{LooperToken()});
}

void BWindow::Minimize(bool minimize)
{
    vetch::CurrentDisplay()->Apply(vetch::WindowMinimized{LooperToken(), minimize});
}

void BWindow::Zoom(BPoint origin, float width, float height)
{
    SetFrame({origin.x, origin.y, origin.x + width, origin.y + height});
}

void BWindow::FrameMoved(BPoint) {}

void BWindow::FrameResized(float, float) {}

void BWindow::WindowActivated(bool) {}

void BWindow::ScreenChanged(BRect, color_space) {}

void BWindow::MenusBeginning() {}

void BWindow::MenusEnded() {}

bool BWindow::IsHidden() const
{
    return hidden;
}

BRect BWindow::Frame() const
{
    return frame;
}

BRect BWindow::Bounds() const
{
    return {0, 0, frame.Width(), frame.Height()};
}

void BWindow::MoveTo(float x, float y)
{
    SetFrame({x, y, x + frame.Width(), y + frame.Height()});
}

void BWindow::ResizeTo(float width, float height)
{
    SetFrame({frame.left, frame.top, frame.left + width, frame.top + height});
}

void BWindow::SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight)
{
    vetch::CurrentDisplay()->Apply(vetch::WindowLimited{LooperToken(), minWidth, maxWidth, minHeight, maxHeight});
}

void BWindow::SetTitle(const char* newTitle)
{
    title = newTitle == nullptr ? "" : newTitle;
    vetch::CurrentDisplay()->Apply(vetch::WindowTitled{LooperToken(), title});
}

void BWindow::AddChild(BView* view)
{
    root->AddChild(view);
}

void BWindow::AddChildFromNib(BView* view, long item)
{
    root->AddChildFromNib(view, item);
}

void BWindow::Activate(bool nowActive)
{
    if ((flags & B_AVOID_FOCUS) == 0)
        SetActive(nowActive);
}

bool BWindow::IsActive() const
{
    return active;
}

bool BWindow::IsShowingSheet() const
{
    return showingSheet;
}

void BWindow::SetShowingSheet(bool showing)
{
    showingSheet = showing;
}

BPoint BWindow::ConvertToScreen(BPoint point) const
{
    return {frame.left + point.x, frame.top + point.y};
}

WindowRef BWindow::NativeWindow() const
{
    return reinterpret_cast<WindowRef>(const_cast<BWindow*>(this));
}

void BWindow::DispatchMessage(BMessage* message, BHandler* handler)
{
    if (message->what == vetch::kFrameChanged)
        TakeUserFrame(*message);
    else if (message->what == vetch::kActivated)
        Activate(!hidden && IntField(*message, "active", 0) != 0); // it may have been hidden since
    else
        BLooper::DispatchMessage(message, handler);
}

void BWindow::QuitAccepted()
{
    // Runs on the thread of the first Quit(), so it touches only what any thread may touch.
    vetch::CurrentDisplay()->Apply(vetch::WindowClosed{LooperToken()});
}

void BWindow::SetFrame(BRect newFrame)
{
    const BRect oldFrame = frame;
    frame = newFrame;
    vetch::CurrentDisplay()->Apply(vetch::WindowMoved{LooperToken(), frame});
    if (frame.Width() != oldFrame.Width() || frame.Height() != oldFrame.Height()) {
        root->SetFrame(Bounds());
        FrameResized(frame.Width(), frame.Height());
    }
    if (frame.left != oldFrame.left || frame.top != oldFrame.top)
        FrameMoved({frame.left, frame.top});
}

void BWindow::SetFocus(BView* view)
{
    focus = view;
    const vetch::HandlerToken token = view == nullptr ? vetch::kNoHandler : view->Token();
    vetch::CurrentDisplay()->Apply(vetch::WindowFocused{LooperToken(), token});
}

void BWindow::SetActive(bool nowActive)
{
    if (active == nowActive)
        return;
    active = nowActive;
    vetch::CurrentDisplay()->Apply(vetch::WindowActivated{LooperToken(), active});
    WindowActivated(active);
}

void BWindow::TakeUserFrame(const BMessage& message)
{
    SetFrame({IntField(message, "left", frame.left), IntField(message, "top", frame.top),
              IntField(message, "right", frame.right), IntField(message, "bottom", frame.bottom)});
}
