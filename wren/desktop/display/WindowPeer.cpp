#include "wren/desktop/display/WindowPeer.h"

#include "vetch/display/WindowKinds.h"
#include "wren/desktop/display/FontTable.h"
#include "wren/desktop/display/ListPeer.h"
#include "wren/desktop/display/PlaceBesideLine.h"
#include "wren/desktop/display/ShownText.h"
#include "wren/desktop/display/UserPosts.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QScreen>

#include <algorithm>
#include <chrono>
#include <utility>

namespace wren {

namespace {

// A frame that the user drags is reported once it rests: the framework's answers to older frames would pull it back. So
// would its answers to a window manager that changes the frame step by step.
constexpr std::chrono::milliseconds kRest{60};

Qt::WindowFlags FlagsFor(const vetch::WindowDescription& window)
{
    const WindowStyle style = StyleOf(window);
    if (style.isBare)
        return Qt::ToolTip | Qt::FramelessWindowHint; // the only kind that leaves the keyboard alone everywhere
    const Qt::WindowFlags kind =
        window.look == B_FLOATING_WINDOW_LOOK
            ? Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint
            : Qt::Dialog;
    return style.avoidsFocus ? kind | Qt::WindowDoesNotAcceptFocus : kind;
}

} // namespace

WindowPeer::WindowPeer(const vetch::WindowDescription& window, const Surroundings& surroundings, QWidget* parent)
    : QWidget(parent, FlagsFor(window)), token(window.window), handler(window.handler), style(StyleOf(window)),
      keptLine(surroundings.keptLine), content(new WindowContent(window.window, style, surroundings, this)),
      frameTimer(this)
{
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating, style.avoidsFocus);
    setAttribute(Qt::WA_AlwaysShowToolTips); // a list never has the keyboard
    setFont(FontTable::FontOf(12));
    frameTimer.setSingleShot(true);
    frameTimer.setInterval(kRest);
    connect(&frameTimer, &QTimer::timeout, this, [this] { ReportFrame(); });
    SetTitle(window.title);
    Place(window.frame);
}

WindowPeer::~WindowPeer()
{
    delete content; // it may be in a window of the host's
}

// The views

ViewPeer* WindowPeer::MakeView(const vetch::ViewDescription& view, int lineHeight)
{
    return content == nullptr ? nullptr : content->MakeView(view, lineHeight, Grown());
}

void WindowPeer::PlaceView(const QWidget& widget, BRect frame)
{
    if (content != nullptr)
        content->PlaceView(widget, frame, Grown());
}

ListPeer* WindowPeer::List() const
{
    return content == nullptr ? nullptr : content->List();
}

void WindowPeer::LayOut()
{
    if (content == nullptr)
        return;
    if (!taken)
        content->setGeometry(rect());
    content->LayOut(Grown());
}

QSize WindowPeer::Grown() const
{
    return taken ? QSize(0, 0) : size() - told.size();
}

// The window

void WindowPeer::ShowUp()
{
    if (taken)
        return;
    if (content != nullptr)
        content->OrderTabs();
    if (style.isFloating && !isVisible())
        StandBesideLine();
    show();
    raise();
    if (!style.avoidsFocus)
        activateWindow();
}

// The framework knows nothing of title bars, nor that the list shows shorter rows. It learns of the new frame as of one
// that the user has made.
void WindowPeer::StandBesideLine()
{
    const QRect line = keptLine ? keptLine() : QRect();
    const ListPeer* list = List();
    if (line.isNull() || list == nullptr || parentWidget() == nullptr)
        return;
    const QSize narrow(std::max(minimumWidth(), told.width() - list->WidthSaved()), told.height());
    const QWidget& main = *parentWidget()->window(); // its frame is the best guess: this window has none yet
    const QRect inner = main.geometry();
    const QRect outer = main.frameGeometry();
    const QMargins mains(inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
                         outer.bottom() - inner.bottom());
    const QMargins frame = style.isBare ? QMargins() : mains;
    const QRect place = PlaceBesideLine({told.topLeft(), narrow}, frame, line, main.screen()->availableGeometry());
    setGeometry(place.marginsRemoved(frame));
    lineToClear = line;
    frameTimer.start();
}

void WindowPeer::Withdraw()
{
    frameTimer.stop();
    hide();
}

void WindowPeer::Minimize(bool minimized)
{
    if (taken || !isVisible())
        return;
    if (minimized)
        showMinimized();
    else
        showNormal();
}

void WindowPeer::Place(BRect frame)
{
    told = RectOf(frame);
    if (taken) {
        if (content != nullptr)
            content->setMinimumSize(told.size());
        return;
    }
    BoundSize();
    if (geometry() != told)
        setGeometry(told);
    LayOut();
}

void WindowPeer::Limit(const SizeLimits& newLimits)
{
    limits = newLimits;
    isLimited = true;
    if (!taken)
        BoundSize();
}

// A dialog's controls have fixed places, so it has one size, unless the framework sets limits.
void WindowPeer::BoundSize()
{
    const bool fixed = style.IsDialog() && !isLimited;
    setMinimumSize(fixed ? told.size() : limits.Least(told.size()));
    setMaximumSize(fixed ? told.size() : limits.Most(told.size()));
}

void WindowPeer::SetTitle(const std::string& title)
{
    setWindowTitle(ShownText(title));
}

// When the framework repeats an activation that was posted, it answers, and wants nothing: the user may have gone to
// another window since.
void WindowPeer::Activate(bool active)
{
    const auto posted = std::ranges::find(activations, active);
    const bool answers = posted != activations.end();
    activations.erase(activations.begin(), answers ? posted + 1 : activations.end());
    if (answers || !active || taken || style.avoidsFocus)
        return;
    raise();
    activateWindow();
}

void WindowPeer::FocusOn(QWidget* view)
{
    if (style.avoidsFocus)
        return; // the editor passes its keys on
    if (view != nullptr)
        view->setFocus(Qt::OtherFocusReason);
    else if (content != nullptr && content->window()->focusWidget() != nullptr)
        content->window()->focusWidget()->clearFocus();
}

QWidget* WindowPeer::TakeContent()
{
    if (taken || content == nullptr)
        return nullptr;
    hide();
    taken = true;
    content->OrderTabs();
    content->setParent(nullptr);
    content->setMinimumSize(told.size());
    LayOut();
    return content;
}

// The user

void WindowPeer::closeEvent(QCloseEvent* event)
{
    event->ignore();
    PostQuitRequested(handler);
}

void WindowPeer::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || style.avoidsFocus || taken)
        return;
    if (PostActivated(handler, isActiveWindow()))
        activations.push_back(isActiveWindow());
}

void WindowPeer::keyPressEvent(QKeyEvent* event)
{
    if (content == nullptr)
        return;
    if (style.avoidsFocus) {
        PassOn(*event);
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        content->PressFirstButton();
    } else if (event->key() == Qt::Key_Escape) {
        content->HasButtons() ? content->PressLastButton() : void(PostQuitRequested(handler));
    } else {
        QWidget::keyPressEvent(event);
    }
}

// Without a window manager, or with some of them, the window under the mouse has the keyboard. The keys are the
// editor's even then, and it hands back those that move in a list.
void WindowPeer::PassOn(QKeyEvent& event)
{
    QWidget* editor = parentWidget() == nullptr ? nullptr : parentWidget()->window()->focusWidget();
    if (editor != nullptr)
        QCoreApplication::sendEvent(editor, &event);
    else if (ListPeer* list = List())
        list->TakeKey(event);
}

void WindowPeer::moveEvent(QMoveEvent*)
{
    FrameSeen();
}

void WindowPeer::resizeEvent(QResizeEvent*)
{
    LayOut();
    FrameSeen();
}

void WindowPeer::FrameSeen()
{
    if (geometry() == told)
        reported = {};
    else if (isVisible() && !style.isPopUp)
        frameTimer.start();
}

// Once, as soon as the window manager has put its own frame around the window: the user may move it over the line.
void WindowPeer::ClearLine()
{
    const QRect line = std::exchange(lineToClear, QRect());
    const QRect frame = frameGeometry();
    if (line.isValid() && frame.top() <= line.bottom() && frame.bottom() >= line.top())
        setGeometry(geometry().translated(0, line.bottom() + 1 - frame.top()));
}

// A frame is reported once only: a window manager that insists on a frame gets it.
void WindowPeer::ReportFrame()
{
    ClearLine();
    const QRect seen = geometry();
    if (seen == told || seen == reported || !isVisible() || isMinimized())
        return;
    reported = seen;
    const BRect frame = FrameOf(seen);
    PostFrameChanged(handler, seen.size() == told.size() ? frame : limits.Bounded(frame));
}

} // namespace wren
