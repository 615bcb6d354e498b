// What changed of the framework's objects, as a display is told: values that own all they hold, to be queued or kept.
#pragma once

#include "vetch/app/BHandler.h"
#include "vetch/app/BLooper.h"
#include "vetch/support/Geometry.h"
#include "vetch/support/Types.h"

#include <string>
#include <variant>

namespace vetch {

struct WindowDescription {
    LooperToken window = 0;
    HandlerToken handler = kNoHandler; // receives the user's actions on the window itself
    std::string title;
    BRect frame; // on the screen
    long look = 0;
    uint32 flags = 0;
    bool ofPlugin = true; // false for windows that the host shows itself, such as documents
};

struct ViewDescription {
    enum class Kind { List, Text, Button, CheckBox, Label, Group };

    LooperToken window = 0;
    HandlerToken view = kNoHandler;
    Kind kind = Kind::List;
    long item = 0; // in the interface file; 0 for none
    BRect frame;   // in window coordinates
    std::string text;
    float fontSize = 12;
    bool multiLine = false;     // a text control with several lines
    bool followsWindow = false; // grows and shrinks with the window
};

struct PanelDescription {
    LooperToken panel = 0;             // WindowClosed for it closes the panel
    HandlerToken handler = kNoHandler; // receives the answer
    std::string title;
    std::string directory;
    bool directoriesOnly = false;
    bool multiple = false;
};

// Windows.
struct WindowMade {
    WindowDescription window;
};
struct WindowClosed { // closes its views too
    LooperToken window = 0;
};
struct WindowShown {
    LooperToken window = 0;
};
struct WindowHidden {
    LooperToken window = 0;
};
struct WindowMinimized {
    LooperToken window = 0;
    bool minimized = false;
};
struct WindowMoved { // moved or resized
    LooperToken window = 0;
    BRect frame;
};
struct WindowLimited {
    LooperToken window = 0;
    float minWidth = 0;
    float maxWidth = 0;
    float minHeight = 0;
    float maxHeight = 0;
};
struct WindowTitled {
    LooperToken window = 0;
    std::string title;
};
struct WindowActivated {
    LooperToken window = 0;
    bool active = false;
};
struct WindowFocused {
    LooperToken window = 0;
    HandlerToken view = kNoHandler; // kNoHandler: no view has the focus
};

// Views.
struct ViewMade {
    ViewDescription view;
};
struct ViewMoved {
    HandlerToken view = kNoHandler;
    BRect frame;
};
struct ListItemAdded {
    HandlerToken list = kNoHandler;
    long index = 0;
    std::string text;
};
struct ListItemRemoved {
    HandlerToken list = kNoHandler;
    long index = 0;
};
struct ListItemChanged {
    HandlerToken list = kNoHandler;
    long index = 0;
    std::string text;
};
struct ListSelected {
    HandlerToken list = kNoHandler;
    long index = -1; // -1: none
};
struct ListColoured {
    HandlerToken list = kNoHandler;
    rgb_color selection;
};
struct TextChanged {
    HandlerToken control = kNoHandler;
    std::string text;
};
struct TextSelected { // bytes
    HandlerToken control = kNoHandler;
    long start = 0;
    long end = 0;
};
struct CheckChanged {
    HandlerToken control = kNoHandler;
    bool on = false;
};

// The rest.
struct Beeped {};
struct PanelOpened { // the display later posts kPanelDone to the panel's window, with "refs" unless dismissed
    PanelDescription panel;
};

using Update = std::variant<WindowMade, WindowClosed, WindowShown, WindowHidden, WindowMinimized, WindowMoved,
                            WindowLimited, WindowTitled, WindowActivated, WindowFocused, ViewMade, ViewMoved,
                            ListItemAdded, ListItemRemoved, ListItemChanged, ListSelected, ListColoured, TextChanged,
                            TextSelected, CheckChanged, Beeped, PanelOpened>;

} // namespace vetch
