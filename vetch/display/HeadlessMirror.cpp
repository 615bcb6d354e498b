#include "vetch/display/HeadlessMirror.h"

#include <algorithm>

namespace vetch {

namespace {

using Kind = ViewDescription::Kind;

bool IsControl(const ViewDescription& view)
{
    return view.item != 0 && (view.kind == Kind::Text || view.kind == Kind::Button || view.kind == Kind::CheckBox);
}

} // namespace

void HeadlessMirror::Apply(const WindowMade& made)
{
    const WindowDescription& description = made.window;
    if (!description.ofPlugin)
        return;
    Window& window = windows[description.window];
    window.handler = description.handler;
    window.state.number = ++lastNumber;
    window.state.token = description.window;
    window.state.title = description.title;
    window.state.look = description.look;
    window.state.flags = description.flags;
    window.state.frame = description.frame;
}

void HeadlessMirror::Apply(const WindowLimited& limited)
{
    if (Window* window = Find(limited.window))
        window->state.limits = {limited.minWidth, limited.maxWidth, limited.minHeight, limited.maxHeight};
}

void HeadlessMirror::Apply(const WindowTitled& titled)
{
    if (Window* window = Find(titled.window))
        window->state.title = titled.title;
}

void HeadlessMirror::Apply(const WindowFocused& focused)
{
    if (Window* window = Find(focused.window))
        window->focus = focused.view;
}

void HeadlessMirror::Apply(const ViewMade& made)
{
    const ViewDescription& description = made.view;
    Window* window = Find(description.window);
    if (window == nullptr)
        return;
    View& view = window->views[description.view];
    view.description = description;
    view.control.item = description.item;
    view.control.kind = description.kind;
    view.control.text = description.text;
    windowOfView[description.view] = description.window;
}

void HeadlessMirror::Apply(const ViewMoved& moved)
{
    if (View* view = FindView(moved.view))
        view->description.frame = moved.frame;
}

void HeadlessMirror::Apply(const ListItemAdded& added)
{
    if (View* view = FindView(added.list))
        view->list.items.insert(view->list.items.begin() + added.index, added.text);
}

void HeadlessMirror::Apply(const ListItemRemoved& removed)
{
    if (View* view = FindView(removed.list))
        view->list.items.erase(view->list.items.begin() + removed.index);
}

void HeadlessMirror::Apply(const ListItemChanged& changed)
{
    if (View* view = FindView(changed.list))
        view->list.items[changed.index] = changed.text;
}

void HeadlessMirror::Apply(const ListSelected& selected)
{
    if (View* view = FindView(selected.list))
        view->list.selected = selected.index;
}

void HeadlessMirror::Apply(const ListColoured& coloured)
{
    if (View* view = FindView(coloured.list))
        view->list.colour = coloured.selection;
}

void HeadlessMirror::Apply(const TextChanged& changed)
{
    if (View* view = FindView(changed.control))
        view->control.text = changed.text;
}

void HeadlessMirror::Apply(const TextSelected& selected)
{
    if (View* view = FindView(selected.control)) {
        view->control.selectionStart = selected.start;
        view->control.selectionEnd = selected.end;
    }
}

void HeadlessMirror::Apply(const CheckChanged& changed)
{
    if (View* view = FindView(changed.control))
        view->control.on = changed.on;
}

void HeadlessMirror::Forget(LooperToken token)
{
    const auto found = windows.find(token);
    if (found == windows.end())
        return;
    for (const auto& [view, ignored] : found->second.views)
        windowOfView.erase(view);
    windows.erase(found);
}

HeadlessMirror::Window* HeadlessMirror::Find(LooperToken token)
{
    const auto found = windows.find(token);
    return found == windows.end() ? nullptr : &found->second;
}

HeadlessMirror::View* HeadlessMirror::FindView(HandlerToken token)
{
    const auto found = windowOfView.find(token);
    return found == windowOfView.end() ? nullptr : &windows.at(found->second).views.at(token);
}

const HeadlessMirror::Window* HeadlessMirror::FindVisible(long number) const
{
    for (const auto& [token, window] : windows)
        if (window.state.number == number && window.state.visible)
            return &window;
    return nullptr;
}

const HeadlessMirror::View* HeadlessMirror::FindList(const Window& window)
{
    for (const auto& [token, view] : window.views)
        if (view.description.kind == Kind::List)
            return &view;
    return nullptr;
}

const HeadlessMirror::View* HeadlessMirror::FindControl(const Window& window, long item, Kind kind)
{
    for (const auto& [token, view] : window.views)
        if (IsControl(view.description) && view.description.item == item && view.description.kind == kind)
            return &view;
    return nullptr;
}

std::vector<HandlerToken> HeadlessMirror::OtherActiveWindows(LooperToken token) const
{
    std::vector<HandlerToken> others;
    for (const auto& [other, window] : windows)
        if (other != token && window.state.active)
            others.push_back(window.handler);
    return others;
}

std::vector<ShownWindow> HeadlessMirror::States() const
{
    std::vector<ShownWindow> states;
    for (const auto& [token, window] : windows)
        states.push_back(State(window));
    std::ranges::sort(states, {}, &ShownWindow::number);
    return states;
}

ShownWindow HeadlessMirror::State(const Window& window)
{
    ShownWindow state = window.state;
    if (const View* view = FindList(window)) {
        state.list = view->list;
        state.list->focus = view->description.view == window.focus;
        state.list->frame = view->description.frame;
    }
    for (const auto& [token, view] : window.views) {
        if (!IsControl(view.description))
            continue;
        state.controls.push_back(view.control);
        state.controls.back().focus = token == window.focus;
        state.controls.back().frame = view.description.frame;
    }
    std::ranges::sort(state.controls, {}, &ShownControl::item);
    return state;
}

} // namespace vetch
