// The desktop as the framework's display: its windows, controls, menus and alerts are Qt's.
//
// Looper threads never call Qt. Updates go into a queue behind a mutex of its own, and an eventfd wakes the GUI thread,
// which is the document thread: it carries them out there, in order. Peers are found by token, and an update for a
// token that is gone is dropped. What the user does is posted to the model, which answers with the state it has then.
#pragma once

#include "vetch/display/Display.h"
#include "wren/desktop/display/GuiQueue.h"

#include <functional>
#include <memory>

class QFont;
class QRect;
class QString;
class QWidget;

namespace wren {

class FontTable;
class Peers;
class ScreenTable;
struct ModifierKeys;

// Made on the GUI thread, after the QApplication and before the first window of the framework.
class QtDisplay : public vetch::Display {
public:
    QtDisplay();
    ~QtDisplay() override;

    // Carries out all updates that are queued. It never runs the framework's loop. GUI thread.
    void Drain();

    // Called on any thread when there is something to drain; it must not call back. Set once, before the first window.
    void SetWakeUp(std::function<void()> wake);

    // The editor's own window: parent of alerts, panels and pop-ups. Borrowed; null for none.
    void SetMainWindow(QWidget* window);

    // Which keys menus and lists take for the framework's modifiers. GUI thread.
    void SetModifierKeys(const ModifierKeys& keys);

    // The font of the plug-in's lists that are made from now on: the text's, as it is zoomed. GUI thread.
    void SetListFont(const QFont& font);

    // The line of the text, on the screen and from the name on, that a list of matches must leave visible; a null
    // rectangle for none. Asked on the GUI thread; set before the first window.
    void SetKeptLine(std::function<QRect()> line);

    // Called on the GUI thread after each beep of the plug-in's, which says that there is nothing to show.
    void SetOnBeep(std::function<void()> beeped);

    // What is in the first text field of the plug-in's newest dialog; "" without one. GUI thread.
    QString TypedText() const;

    // Called on the GUI thread with each answer of the user's to an alert of the plug-in's; returns the answer that the
    // plug-in gets.
    void SetOnAnswer(std::function<long(const vetch::AlertDescription& alert, long answer)> answered);

    // Takes the content of a window that the framework made for the host (a preference panel), to be put into a dialog
    // of Qt's, instead of showing it as a window of its own; null when there is none. The window's death deletes the
    // content, and the content's death closes nothing. Call it after the window was made and before anything shows it.
    // GUI thread.
    QWidget* TakeContent(vetch::LooperToken window);

    // The newest visible window of the plug-in that is not a pop-up at the caret and has a list: the list of matches.
    // It never takes the keyboard, so the editor hands it the keys that move in it. GUI thread, drained.
    struct ListWindow {
        vetch::LooperToken window = 0;
        vetch::HandlerToken handler = vetch::kNoHandler; // of the window
        vetch::HandlerToken list = vetch::kNoHandler;
        long selected = -1;
    };
    ListWindow FrontList() const; // window 0 for none

    // Every visible window of the plug-in's that closes when the user presses the mouse outside it: asked when the
    // mouse was pressed in the editor. GUI thread.
    bool IsPopUpVisible() const;
    void DismissPopUps(); // as such a press does

    // vetch::Display
    void Apply(vetch::Update update) override;
    float StringWidth(const std::string& text, float fontSize) const override;
    vetch::FontMetrics Metrics(float fontSize) const override;
    float MiniScrollBarWidth() const override;
    BRect ScreenFrame(BPoint where) const override;
    long RunAlert(const vetch::AlertDescription& alert) override;
    std::optional<long> RunMenu(const vetch::MenuDescription& menu) override;

private:
    const float scrollBarWidth;
    std::unique_ptr<FontTable> fonts;
    std::unique_ptr<ScreenTable> screens;
    GuiQueue<vetch::Update> queue;
    std::unique_ptr<Peers> peers;
    std::function<long(const vetch::AlertDescription&, long)> onAnswer;
};

} // namespace wren
