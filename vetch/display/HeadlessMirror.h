// The headless display's state: windows, their views, and the contents of views.
#pragma once

#include "vetch/display/Display.h"
#include "vetch/display/ShownState.h"

#include <map>
#include <vector>

namespace vetch {

// Not thread-safe: the display's lock guards it. Updates of unknown windows and views are dropped.
class HeadlessMirror {
public:
    struct View {
        ViewDescription description;
        ShownList list;
        ShownControl control;
    };
    struct Window {
        ShownWindow state;
        HandlerToken handler = kNoHandler;
        HandlerToken focus = kNoHandler;
        bool shownOnce = false;
        std::map<HandlerToken, View> views;
    };

    void Apply(const WindowMade& made);
    void Apply(const WindowMinimized&) {} // not mirrored
    void Apply(const WindowLimited& limited);
    void Apply(const WindowTitled& titled);
    void Apply(const WindowFocused& focused);
    void Apply(const ViewMade& made);
    void Apply(const ViewMoved& moved);
    void Apply(const ListItemAdded& added);
    void Apply(const ListItemRemoved& removed);
    void Apply(const ListItemChanged& changed);
    void Apply(const ListSelected& selected);
    void Apply(const ListColoured& coloured);
    void Apply(const TextChanged& changed);
    void Apply(const TextSelected& selected);
    void Apply(const CheckChanged& changed);
    void Forget(LooperToken window);

    // Null when unknown; valid until the next change.
    Window* Find(LooperToken window);
    const Window* FindVisible(long number) const;
    static const View* FindList(const Window& window);
    static const View* FindControl(const Window& window, long item, ViewDescription::Kind kind);

    std::vector<HandlerToken> OtherActiveWindows(LooperToken window) const;
    std::vector<ShownWindow> States() const; // by number

private:
    View* FindView(HandlerToken view);
    static ShownWindow State(const Window& window);

    std::map<LooperToken, Window> windows;
    std::map<HandlerToken, LooperToken> windowOfView;
    long lastNumber = 0;
};

} // namespace vetch
