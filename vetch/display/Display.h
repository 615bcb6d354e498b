// The one boundary between the framework and a screen.
//
// The framework's objects hold the state; a display mirrors it. Updates go to the display and never block; the user's
// actions come back as messages to the window's looper. Everything here is plain data: a display knows windows, views
// and handlers by token, and drops updates for tokens that are gone.
#pragma once

#include "vetch/app/BHandler.h"
#include "vetch/app/BLooper.h"
#include "vetch/storage/EntryRef.h"
#include "vetch/support/Geometry.h"
#include "vetch/support/Types.h"

#include <optional>
#include <string>
#include <vector>

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

struct MenuRow {
    std::string label; // "" for a separator
    bool enabled = true;
    char key = 0; // 0: no shortcut
    uint32 modifiers = 0;
};

struct MenuDescription {
    std::string name;
    std::vector<MenuRow> rows;
    BPoint where; // on the screen
    float fontSize = 12;
};

struct AlertDescription {
    std::string title;
    std::string text;
    std::vector<std::string> buttons; // at least one; the last is the default
};

struct PanelDescription {
    LooperToken panel = 0;             // WindowClosed() for it closes the panel
    HandlerToken handler = kNoHandler; // receives the answer
    std::string title;
    std::string directory;
    bool directoriesOnly = false;
    bool multiple = false;
};

struct FontMetrics {
    float ascent = 0;
    float descent = 0;
    float leading = 0;
};

class Display {
public:
    virtual ~Display() = default;

    // Updates. Any thread, in the order of each window's changes; they copy, queue and return.
    virtual void WindowMade(const WindowDescription& window) = 0;
    virtual void WindowClosed(LooperToken window) = 0; // closes its views too
    virtual void WindowShown(LooperToken window) = 0;
    virtual void WindowHidden(LooperToken window) = 0;
    virtual void WindowMinimized(LooperToken window, bool minimized) = 0;
    virtual void WindowMoved(LooperToken window, BRect frame) = 0; // moved or resized
    virtual void WindowLimited(LooperToken window, float minWidth, float maxWidth, float minHeight,
                               float maxHeight) = 0;
    virtual void WindowTitled(LooperToken window, const std::string& title) = 0;
    virtual void WindowActivated(LooperToken window, bool active) = 0;
    virtual void WindowFocused(LooperToken window, HandlerToken view) = 0; // kNoHandler: none
    virtual void ViewMade(const ViewDescription& view) = 0;
    virtual void ViewMoved(HandlerToken view, BRect frame) = 0;
    virtual void ListItemAdded(HandlerToken list, long index, const std::string& text) = 0;
    virtual void ListItemRemoved(HandlerToken list, long index) = 0;
    virtual void ListItemChanged(HandlerToken list, long index, const std::string& text) = 0;
    virtual void ListSelected(HandlerToken list, long index) = 0; // -1: none
    virtual void ListColoured(HandlerToken list, rgb_color selection) = 0;
    virtual void TextChanged(HandlerToken control, const std::string& text) = 0;
    virtual void TextSelected(HandlerToken control, long start, long end) = 0; // bytes
    virtual void CheckChanged(HandlerToken control, bool on) = 0;
    virtual void Beep() = 0;

    // Questions; they return at once, on any thread.
    virtual float StringWidth(const std::string& text, float fontSize) const = 0;
    virtual FontMetrics Metrics(float fontSize) const = 0;
    virtual float MiniScrollBarWidth() const = 0;
    virtual BRect ScreenFrame(BPoint where) const = 0; // the usable frame of the screen that holds 'where'

    // Modal, on the document thread: return when the user has answered.
    virtual long RunAlert(const AlertDescription& alert) = 0;             // a button's index; closed or Escape: 0
    virtual std::optional<long> RunMenu(const MenuDescription& menu) = 0; // a row's index; none: dismissed

    // Returns at once. The display later posts kPanelDone to the panel's window, with "refs" unless dismissed.
    virtual void OpenPanel(const PanelDescription& panel) = 0;
};

// The display in use; not null after SetDisplay(). Set it before the first window is made, and not again while there
// are windows.
Display* CurrentDisplay();
void SetDisplay(Display* display); // borrowed

// Messages from a display. The model answers each change with its state afterwards (WindowMoved, TextChanged,
// CheckChanged, ListSelected): its answer counts. To a list's token: B_MOUSE_DOWN, B_KEY_DOWN. To a control's:
constexpr uint32 kPressed = FourCC("vPrs");     // a button was pressed
constexpr uint32 kTextEdited = FourCC("vTxt");  // "text" string, "start" and "end" int32 (the selection): a change
constexpr uint32 kTextEntered = FourCC("vEnt"); // the same; the user left the field or pressed Enter
constexpr uint32 kChecked = FourCC("vChk");     // "on" int32
// To a window's token:
constexpr uint32 kFrameChanged = FourCC("vFrm"); // "left", "top", "right", "bottom" int32: the user moved or resized it
constexpr uint32 kActivated = FourCC("vAct");    // "active" int32
constexpr uint32 kPanelDone = FourCC("vPnl");    // to a panel's window: "refs", none when dismissed
// The user closes a window: B_QUIT_REQUESTED to its token.

} // namespace vetch

// Plays the user's alert sound. Any thread; queued.
void beep();
