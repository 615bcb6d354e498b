// A display without a screen, for tests, automation and the command line.
//
// Deterministic: a character (one UTF-8 code point) is 7 wide, a line has ascent 10, descent 3 and leading 1. The
// screen is 0, 0, 1280, 800 until it is set, and answers to modal questions come from a queue. It keeps only a mirror
// of its updates: what a screen would show.
#pragma once

#include "vetch/display/Display.h"
#include "vetch/display/ShownState.h"

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace vetch {

class HeadlessMirror;

// Receives what a user would notice, in order, on the thread that caused it, one call at a time. A call may read the
// mirror. It must not change the display or wait for another thread.
class DisplayObserver {
public:
    virtual ~DisplayObserver() = default;
    virtual void Beeped() {}
    virtual void AlertAnswered(const AlertDescription&, long /*answer*/) {}
    virtual void MenuAnswered(const MenuDescription&, std::optional<long> /*choice*/) {}
    virtual void PanelOpened(const PanelDescription&) {}
    virtual void WindowShown(long /*window*/) {}
    virtual void WindowHidden(long /*window*/) {}
    virtual void WindowMoved(long /*window*/, BRect) {} // visible windows only
    virtual void WindowClosed(long /*window*/) {}       // only for windows that were shown
};

class HeadlessDisplay : public Display {
public:
    using ListState = ShownList;
    using ControlState = ShownControl;
    using WindowState = ShownWindow;

    explicit HeadlessDisplay(DisplayObserver* observer = nullptr); // borrowed
    ~HeadlessDisplay() override;

    // The mirror. Any thread; for settled windows it is what a user would see.
    std::vector<WindowState> Windows() const; // the plug-in's, in the order of creation
    long Beeps() const;

    void SetScreen(BRect frame);

    // Answers to the next questions, used in order. Without an answer an alert gets its last button, a menu is
    // dismissed, and a panel stays open. An empty answer dismisses a panel. A button or row that the user could not
    // choose does not count as an answer.
    void AnswerAlert(long button);
    void AnswerMenu(std::optional<long> row);
    void AnswerPanel(std::optional<std::string> path);

    // The user's actions. False when no such window, item or control is visible; otherwise posts the messages, which
    // take effect once the loopers have settled. Any thread.
    bool InvokeItem(long window, long index);                    // double-clicks it
    bool ClickItem(long window, long index);                     // clicks it once
    bool Press(long window, long item);                          // a button
    bool Enter(long window, long item, const std::string& text); // replaces a text control's text and leaves the field
    bool Check(long window, long item, bool on);
    bool Close(long window);
    bool ResizeByUser(long window, float width, float height); // within the limits; the minimum wins

    // Display
    void Apply(Update update) override;
    float StringWidth(const std::string& text, float fontSize) const override;
    FontMetrics Metrics(float fontSize) const override;
    float MiniScrollBarWidth() const override;
    BRect ScreenFrame(BPoint where) const override;
    long RunAlert(const AlertDescription& alert) override;
    std::optional<long> RunMenu(const MenuDescription& menu) override;

private:
    // What a user would notice, or what the display answers; all else goes into the mirror alone.
    template <class Unnoticed>
    void Show(const Unnoticed& change);
    void Show(const WindowClosed& closed);
    void Show(const WindowShown& shown);
    void Show(const WindowHidden& hidden);
    void Show(const WindowMoved& moved);
    void Show(const WindowActivated& activated);
    void Show(const Beeped& beeped);
    void Show(const PanelOpened& opened);

    template <class Operation>
    auto Change(LooperToken window, Operation operation);
    bool PressMouse(long window, long index, int32 clicks);
    bool PostToControl(long window, long item, ViewDescription::Kind kind, const BMessage& message);
    bool PostToWindow(long window, const std::function<BMessage(const WindowState&)>& message);

    DisplayObserver nobody; // for a null observer
    DisplayObserver* const observer;
    std::mutex turn;          // held around a change and its observer call, to keep their order
    mutable std::mutex mutex; // guards everything below; a leaf
    std::unique_ptr<HeadlessMirror> mirror;
    long beeps = 0;
    BRect screen{0, 0, 1280, 800};
    std::deque<long> alertAnswers;
    std::deque<std::optional<long>> menuAnswers;
    std::deque<std::optional<std::string>> panelAnswers;
};

} // namespace vetch
