// The user's actions on the headless display.
#include "vetch/display/HeadlessDisplay.h"

#include "vetch/app/Loop.h"
#include "vetch/app/Modifiers.h"
#include "vetch/display/HeadlessMirror.h"

#include <algorithm>

namespace vetch {

namespace {

BMessage NewFrame(const BRect& frame)
{
    BMessage message(kFrameChanged);
    message.AddInt32("left", static_cast<int32>(frame.left));
    message.AddInt32("top", static_cast<int32>(frame.top));
    message.AddInt32("right", static_cast<int32>(frame.right));
    message.AddInt32("bottom", static_cast<int32>(frame.bottom));
    return message;
}

// Not std::clamp: the limits may contradict each other.
float Bounded(float value, float least, float most)
{
    return std::max(least, std::min(most, value));
}

} // namespace

bool HeadlessDisplay::InvokeItem(long window, long index)
{
    return PressMouse(window, index, 2);
}

bool HeadlessDisplay::ClickItem(long window, long index)
{
    return PressMouse(window, index, 1);
}

bool HeadlessDisplay::Press(long window, long item)
{
    return PostToControl(window, item, ViewDescription::Kind::Button, BMessage(kPressed));
}

bool HeadlessDisplay::Enter(long window, long item, const std::string& text)
{
    BMessage message(kTextEntered);
    message.AddString("text", text.c_str());
    return PostToControl(window, item, ViewDescription::Kind::Text, message);
}

bool HeadlessDisplay::Check(long window, long item, bool on)
{
    BMessage message(kChecked);
    message.AddInt32("on", on);
    return PostToControl(window, item, ViewDescription::Kind::CheckBox, message);
}

bool HeadlessDisplay::Close(long window)
{
    return PostToWindow(window, [](const WindowState&) { return BMessage(B_QUIT_REQUESTED); });
}

bool HeadlessDisplay::ResizeByUser(long window, float width, float height)
{
    return PostToWindow(window, [=](const WindowState& state) {
        const auto& [minWidth, maxWidth, minHeight, maxHeight] = state.limits;
        BRect frame = state.frame;
        frame.right = frame.left + Bounded(width, minWidth, maxWidth);
        frame.bottom = frame.top + Bounded(height, minHeight, maxHeight);
        return NewFrame(frame);
    });
}

bool HeadlessDisplay::PressMouse(long number, long index, int32 clicks)
{
    HandlerToken list = kNoHandler;
    {
        const std::lock_guard lock(mutex);
        const HeadlessMirror::Window* window = mirror->FindVisible(number);
        const HeadlessMirror::View* view = window == nullptr ? nullptr : HeadlessMirror::FindList(*window);
        if (view == nullptr || index < 0 || index >= static_cast<long>(view->list.items.size()))
            return false;
        list = view->description.view;
    }
    BMessage message(B_MOUSE_DOWN);
    message.AddInt32("index", static_cast<int32>(index));
    message.AddInt32("clicks", clicks);
    return PostToHandler(list, message) == B_OK;
}

bool HeadlessDisplay::PostToControl(long number, long item, ViewDescription::Kind kind, const BMessage& message)
{
    HandlerToken control = kNoHandler;
    {
        const std::lock_guard lock(mutex);
        const HeadlessMirror::Window* window = mirror->FindVisible(number);
        const HeadlessMirror::View* view =
            window == nullptr ? nullptr : HeadlessMirror::FindControl(*window, item, kind);
        if (view == nullptr)
            return false;
        control = view->description.view;
    }
    return PostToHandler(control, message) == B_OK;
}

bool HeadlessDisplay::PostToWindow(long number, const std::function<BMessage(const WindowState&)>& message)
{
    HandlerToken handler = kNoHandler;
    std::optional<BMessage> posted;
    {
        const std::lock_guard lock(mutex);
        const HeadlessMirror::Window* window = mirror->FindVisible(number);
        if (window == nullptr)
            return false;
        handler = window->handler;
        posted = message(window->state);
    }
    return PostToHandler(handler, *posted) == B_OK;
}

} // namespace vetch
