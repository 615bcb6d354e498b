// The desktop's display, with a record of what goes to it.
#pragma once

#include "tests/desktop/hands/QuestionHands.h"
#include "vetch/display/HeadlessDisplay.h"
#include "wren/script/ScriptLog.h"

#include <deque>
#include <optional>
#include <utility>

// Whatever the framework shows goes to the screen, and to a headless display whose log and window numbers are those of
// scripts. Questions are the screen's to answer; the user's answers to them are queued.
class RecordingDisplay final : public vetch::Display {
public:
    RecordingDisplay(vetch::Display& shown, wren::ScriptLog& log, QuestionHands& hands); // borrowed

    const vetch::HeadlessDisplay& Record() const { return record; }
    void AnswerAlert(long button) { alertAnswers.push_back(button); }
    void AnswerPanel(const std::optional<std::string>& path) { panelAnswers.push_back(path); }
    bool TakeAnswered() { return std::exchange(answered, false); } // whether an alert was, since the last time
    void SetScreen(BRect frame) { screen = frame; }                // in place of the real one

    void WindowMade(const vetch::WindowDescription& window) override;
    void WindowClosed(vetch::LooperToken window) override;
    void WindowShown(vetch::LooperToken window) override;
    void WindowHidden(vetch::LooperToken window) override;
    void WindowMinimized(vetch::LooperToken window, bool minimized) override;
    void WindowMoved(vetch::LooperToken window, BRect frame) override;
    void WindowLimited(vetch::LooperToken window, float minWidth, float maxWidth, float minHeight,
                       float maxHeight) override;
    void WindowTitled(vetch::LooperToken window, const std::string& title) override;
    void WindowActivated(vetch::LooperToken window, bool active) override;
    void WindowFocused(vetch::LooperToken window, vetch::HandlerToken view) override;
    void ViewMade(const vetch::ViewDescription& view) override;
    void ViewMoved(vetch::HandlerToken view, BRect frame) override;
    void ListItemAdded(vetch::HandlerToken list, long index, const std::string& text) override;
    void ListItemRemoved(vetch::HandlerToken list, long index) override;
    void ListItemChanged(vetch::HandlerToken list, long index, const std::string& text) override;
    void ListSelected(vetch::HandlerToken list, long index) override;
    void ListColoured(vetch::HandlerToken list, rgb_color selection) override;
    void TextChanged(vetch::HandlerToken control, const std::string& text) override;
    void TextSelected(vetch::HandlerToken control, long start, long end) override;
    void CheckChanged(vetch::HandlerToken control, bool on) override;
    void Beep() override;
    float StringWidth(const std::string& text, float fontSize) const override;
    vetch::FontMetrics Metrics(float fontSize) const override;
    float MiniScrollBarWidth() const override;
    BRect ScreenFrame(BPoint where) const override;
    long RunAlert(const vetch::AlertDescription& alert) override;
    std::optional<long> RunMenu(const vetch::MenuDescription& menu) override;
    void OpenPanel(const vetch::PanelDescription& panel) override;

private:
    vetch::Display& shown;
    wren::ScriptLog& log;
    QuestionHands& hands;
    vetch::HeadlessDisplay record;
    bool answered = false;
    std::optional<BRect> screen; // set while everything is settled
    std::deque<long> alertAnswers;
    std::deque<std::optional<std::string>> panelAnswers;
};
