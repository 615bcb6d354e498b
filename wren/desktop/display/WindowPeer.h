// A window of the plug-in's on the screen.
#pragma once

#include "vetch/display/Display.h"
#include "wren/desktop/display/Frames.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <vector>

namespace wren {

class ButtonPeer;
class ListPeer;
class ViewPeer;
struct ModifierKeys;

// Three kinds: the bordered pop-up at the caret and the floating window of results, which never take the keyboard, and
// the dialog, which does. The user's doings are posted; the window closes and hides only when it is told to. GUI
// thread.
class WindowPeer : public QWidget {
public:
    struct Surroundings {
        const ModifierKeys& keys; // borrowed
        int scrollBarWidth = 0;
    };
    WindowPeer(const vetch::WindowDescription& window, const Surroundings& surroundings, QWidget* parent);
    ~WindowPeer() override;

    vetch::LooperToken Token() const { return token; }
    vetch::HandlerToken Handler() const { return handler; }
    bool IsPopUp() const;
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

    // The views, for a window of somebody else's: this one is never shown from then on. Whoever looks for them finds
    // them by their names, there as here: ContentName() of the window, and ItemName() of each control within.
    QWidget* TakeContent();
    static QString ContentName(vetch::LooperToken window);
    static QString ItemName(long item);

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct View {
        QPointer<QWidget> widget;
        BRect frame; // as told
        bool followsWindow = false;
        bool scrolls = false;
    };
    void SetUp(const vetch::WindowDescription& window);
    bool AvoidsFocus() const;
    bool IsDialog() const;
    ViewPeer* NewPeer(const vetch::ViewDescription& view, int lineHeight);
    ListPeer* NewList(const vetch::ViewDescription& view, int lineHeight);
    ButtonPeer* NewButton(const vetch::ViewDescription& view);
    void LayOut();
    void LayOut(const View& view);
    void BoundSize();
    void OrderTabs();
    void FrameSeen();
    void ReportFrame();
    void PassOn(QKeyEvent& event);
    void Press(const QPointer<ButtonPeer>& button);

    const vetch::LooperToken token;
    const vetch::HandlerToken handler;
    const long look;
    const uint32 flags;
    const Surroundings surroundings;
    QPointer<QWidget> content;
    bool taken = false;
    std::vector<View> views;
    std::vector<QPointer<ButtonPeer>> buttons;
    QPointer<ListPeer> list;

    QRect told;     // the frame
    QRect reported; // the last one that the user, or the window manager, made of it
    SizeLimits limits;
    bool isLimited = false;
    QTimer frameTimer;
    std::deque<bool> activations; // posted, and not yet answered
};

} // namespace wren
