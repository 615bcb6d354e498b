// The one boundary between the framework and a screen.
//
// The framework's objects hold the state; a display mirrors it. Updates go to the display and never block; the user's
// actions come back as messages to the window's looper. Everything here is plain data: a display knows windows, views
// and handlers by token, and drops updates for tokens that are gone.
#pragma once

#include "vetch/display/Update.h"
#include "vetch/storage/EntryRef.h"

#include <optional>
#include <string>
#include <vector>

namespace vetch {

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

struct FontMetrics {
    float ascent = 0;
    float descent = 0;
    float leading = 0;
};

class Display {
public:
    virtual ~Display() = default;

    // Any thread, in the order of each window's changes; keeps or queues the update and returns. An update for a window
    // or view that is gone does nothing.
    virtual void Apply(Update update) = 0;

    // Questions; they return at once, on any thread.
    virtual float StringWidth(const std::string& text, float fontSize) const = 0;
    virtual FontMetrics Metrics(float fontSize) const = 0;
    virtual float MiniScrollBarWidth() const = 0;
    virtual BRect ScreenFrame(BPoint where) const = 0; // the usable frame of the screen that holds 'where'

    // Modal, on the document thread: return when the user has answered.
    virtual long RunAlert(const AlertDescription& alert) = 0;             // a button's index; closed or Escape: 0
    virtual std::optional<long> RunMenu(const MenuDescription& menu) = 0; // a row's index; none: dismissed
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
