// A window of the plug-in's on the screen.
#pragma once

#include "vetch/display/Display.h"
#include "wren/desktop/display/Frames.h"
#include "wren/desktop/display/WindowContent.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <deque>

namespace wren {

// The user's actions are posted; the window closes and hides only when the framework says so. GUI thread.
class WindowPeer : public QWidget {
public:
    using Surroundings = WindowContent::Surroundings;
    WindowPeer(const vetch::WindowDescription& window, const Surroundings& surroundings, QWidget* parent);
    ~WindowPeer() override;

    vetch::LooperToken Token() const { return token; }
    vetch::HandlerToken Handler() const { return handler; }
    bool IsPopUp() const { return style.isPopUp; }
    ListPeer* List() const; // the first one; null for none

    ViewPeer* MakeView(const vetch::ViewDescription& view, int lineHeight); // null for a kind that is not shown
    void PlaceView(const QWidget& view, BRect frame);

    void ShowUp();
    void Withdraw();
    void Minimize(bool minimized);
    void Place(BRect frame);
    void Limit(const SizeLimits& limits);
    void SetTitle(const std::string& title);
    void Activate(bool active);
    void FocusOn(QWidget* view); // null: none

    // Hands the views over to a window of the host's: this window is never shown from then on. Null when they were
    // handed over before.
    QWidget* TakeContent();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void StandBesideLine();
    void ClearLine();
    void LayOut();
    QSize Grown() const; // beyond the framework's frame
    void BoundSize();
    void FrameSeen();
    void ReportFrame();
    void PassOn(QKeyEvent& event);

    const vetch::LooperToken token;
    const vetch::HandlerToken handler;
    const WindowStyle style;
    const std::function<QRect()>& keptLine;
    QPointer<WindowContent> content; // null once the host has deleted it
    bool taken = false;

    QRect lineToClear; // null once the window has its frame
    QRect told;        // the framework's frame
    QRect reported;    // the last frame that the user, or the window manager, made and that was posted
    SizeLimits limits;
    bool isLimited = false;
    QTimer frameTimer;
    std::deque<bool> activations; // posted, and not yet answered
};

} // namespace wren
