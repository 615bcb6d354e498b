#include "wren/desktop/display/WindowPeer.h"

#include "vetch/display/WindowKinds.h"
#include "wren/desktop/display/ControlPeers.h"
#include "wren/desktop/display/FontTable.h"
#include "wren/desktop/display/ListPeer.h"
#include "wren/desktop/display/ShownText.h"
#include "wren/desktop/display/TextPeer.h"
#include "wren/desktop/display/UserPosts.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSizeGrip>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace wren {

namespace {

using Kind = vetch::ViewDescription::Kind;

constexpr int kBorder = 1; // of a pop-up, inside its frame

// A frame that the user drags is told once it rests: answers to what it was meanwhile would pull it back. So would
// those to what a window manager does to it step by step.
constexpr std::chrono::milliseconds kRest{60};

QRect RectOf(const BRect& frame)
{
    return {static_cast<int>(std::lround(frame.left)), static_cast<int>(std::lround(frame.top)),
            static_cast<int>(std::lround(frame.Width())), static_cast<int>(std::lround(frame.Height()))};
}

BRect FrameOf(const QRect& rect)
{
    return {static_cast<float>(rect.x()), static_cast<float>(rect.y()), static_cast<float>(rect.x() + rect.width()),
            static_cast<float>(rect.y() + rect.height())};
}

Qt::WindowFlags FlagsFor(const vetch::WindowDescription& window)
{
    if (window.look == B_BORDERED_WINDOW_LOOK)
        return Qt::ToolTip | Qt::FramelessWindowHint; // the only kind that leaves the keyboard alone everywhere
    const Qt::WindowFlags kind = window.look == B_FLOATING_WINDOW_LOOK ? Qt::Tool : Qt::Dialog;
    return (window.flags & B_AVOID_FOCUS) != 0 ? kind | Qt::WindowDoesNotAcceptFocus : kind;
}

// With a line around it for a window that has no other, in a tone that is seen on light and on dark grounds.
class Content : public QWidget {
public:
    Content(bool bordered, QWidget* parent) : QWidget(parent), bordered(bordered)
    {
        if (bordered)
            setContentsMargins(kBorder, kBorder, kBorder, kBorder);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!bordered)
            return;
        QPainter painter(this);
        painter.setPen(Qt::gray);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }

private:
    const bool bordered;
};

bool ReadsBefore(const QWidget* one, const QWidget* other)
{
    return std::pair(one->y(), one->x()) < std::pair(other->y(), other->x());
}

} // namespace

WindowPeer::WindowPeer(const vetch::WindowDescription& window, const Surroundings& surroundings, QWidget* parent)
    : QWidget(parent, FlagsFor(window)), token(window.window), handler(window.handler), look(window.look),
      flags(window.flags), surroundings(surroundings), content(new Content(IsPopUp(), this)), frameTimer(this)
{
    SetUp(window);
}

WindowPeer::~WindowPeer()
{
    delete content; // which may hang in a window of somebody else's
}

void WindowPeer::SetUp(const vetch::WindowDescription& window)
{
    content->setObjectName(ContentName(token));
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating, AvoidsFocus());
    setFont(FontTable::FontOf(12));
    frameTimer.setSingleShot(true);
    frameTimer.setInterval(kRest);
    connect(&frameTimer, &QTimer::timeout, this, [this] { ReportFrame(); });
    SetTitle(window.title);
    Place(window.frame);
}

bool WindowPeer::IsPopUp() const
{
    return look == B_BORDERED_WINDOW_LOOK;
}

bool WindowPeer::AvoidsFocus() const
{
    return IsPopUp() || (flags & B_AVOID_FOCUS) != 0;
}

bool WindowPeer::IsDialog() const
{
    return look != B_BORDERED_WINDOW_LOOK && look != B_FLOATING_WINDOW_LOOK;
}

ListPeer* WindowPeer::List() const
{
    return list;
}

// Views

ViewPeer* WindowPeer::MakeView(const vetch::ViewDescription& view, int lineHeight)
{
    if (content == nullptr)
        return nullptr; // its new owner has deleted it
    ViewPeer* peer = NewPeer(view, lineHeight);
    QWidget& widget = peer->Widget();
    widget.setObjectName(ItemName(view.item));
    widget.setFont(FontTable::FontOf(view.fontSize));
    views.push_back({&widget, view.frame, view.followsWindow, view.kind == Kind::List});
    LayOut(views.back());
    widget.show();
    return peer;
}

ViewPeer* WindowPeer::NewPeer(const vetch::ViewDescription& view, int lineHeight)
{
    switch (view.kind) {
    case Kind::List:
        return NewList(view, lineHeight);
    case Kind::Button:
        return NewButton(view);
    case Kind::CheckBox:
        return new CheckBoxPeer(view, content);
    case Kind::Label:
        return new LabelPeer(view, content);
    case Kind::Group:
        return new GroupPeer(view, content);
    case Kind::Text:
        break;
    }
    TextPeer* peer = nullptr;
    if (view.multiLine)
        peer = new AreaPeer(view.view, content);
    else
        peer = new LinePeer(view.view, content);
    peer->SetText(view.text);
    return peer;
}

ListPeer* WindowPeer::NewList(const vetch::ViewDescription& view, int lineHeight)
{
    auto* peer = new ListPeer(view.view, surroundings.keys, lineHeight, content);
    if (list == nullptr)
        list = peer;
    if (AvoidsFocus())
        peer->setFocusPolicy(Qt::NoFocus);
    if (look == B_FLOATING_WINDOW_LOOK) {
        peer->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        peer->addScrollBarWidget(new QSizeGrip(peer), Qt::AlignBottom);
    }
    return peer;
}

ButtonPeer* WindowPeer::NewButton(const vetch::ViewDescription& view)
{
    auto* peer = new ButtonPeer(view, content);
    peer->setDefault(buttons.empty());
    buttons.push_back(peer);
    return peer;
}

void WindowPeer::PlaceView(const QWidget& widget, BRect frame)
{
    const auto found = std::ranges::find(views, &widget, [](const View& view) { return view.widget.data(); });
    if (found == views.end())
        return;
    found->frame = frame;
    LayOut(*found);
}

void WindowPeer::LayOut()
{
    if (!taken && content != nullptr)
        content->setGeometry(rect());
    for (const View& view : views)
        LayOut(view);
}

// While the user drags the window, the framework's frames are those from before: the views follow on their own.
void WindowPeer::LayOut(const View& view)
{
    if (view.widget == nullptr || content == nullptr)
        return;
    QRect place = RectOf(view.frame);
    if (view.scrolls)
        place.setWidth(place.width() + surroundings.scrollBarWidth); // which stands beside the frame
    if (view.followsWindow && !taken) {
        const QSize grown = size() - told.size();
        place.setSize(place.size() + grown);
    }
    view.widget->setGeometry(view.scrolls ? place.intersected(content->contentsRect()) : place);
}

// The window

void WindowPeer::ShowUp()
{
    if (taken)
        return;
    OrderTabs();
    show();
    raise();
    if (!AvoidsFocus())
        activateWindow();
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

// A dialog's controls stand where they were put: it has one size, unless the framework says otherwise.
void WindowPeer::BoundSize()
{
    const bool fixed = IsDialog() && !isLimited;
    setMinimumSize(fixed ? told.size() : limits.Least(told.size()));
    setMaximumSize(fixed ? told.size() : limits.Most(told.size()));
}

void WindowPeer::SetTitle(const std::string& title)
{
    setWindowTitle(ShownText(title));
}

// The framework's answer to what was posted, and not its own wish, when it says what was posted: the user may have gone
// on to another window since.
void WindowPeer::Activate(bool active)
{
    const auto posted = std::ranges::find(activations, active);
    const bool answers = posted != activations.end();
    activations.erase(activations.begin(), answers ? posted + 1 : activations.end());
    if (answers || !active || taken || AvoidsFocus())
        return;
    raise();
    activateWindow();
}

void WindowPeer::FocusOn(QWidget* view)
{
    if (AvoidsFocus())
        return; // its keys come by way of the editor
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
    OrderTabs();
    content->setParent(nullptr);
    content->setMinimumSize(told.size());
    LayOut();
    return content;
}

QString WindowPeer::ContentName(vetch::LooperToken window)
{
    return QStringLiteral("window %1").arg(window);
}

QString WindowPeer::ItemName(long item)
{
    return QStringLiteral("item %1").arg(item);
}

// From the top down, as they are read, in whichever order they were made.
void WindowPeer::OrderTabs()
{
    std::vector<QWidget*> order;
    for (const View& view : views)
        if (view.widget != nullptr && view.widget->focusPolicy() != Qt::NoFocus)
            order.push_back(view.widget);
    std::ranges::sort(order, ReadsBefore);
    for (size_t i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
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
    if (event->type() != QEvent::ActivationChange || AvoidsFocus() || taken)
        return;
    if (PostActivated(handler, isActiveWindow()))
        activations.push_back(isActiveWindow());
}

void WindowPeer::keyPressEvent(QKeyEvent* event)
{
    if (AvoidsFocus()) {
        PassOn(*event);
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Press(buttons.empty() ? nullptr : buttons.front());
    } else if (event->key() == Qt::Key_Escape) {
        buttons.empty() ? void(PostQuitRequested(handler)) : Press(buttons.back());
    } else {
        QWidget::keyPressEvent(event);
    }
}

// The keyboard may be where the mouse is, with no window manager or one that decides so: the keys are the editor's all
// the same, and it hands back those that move in a list.
void WindowPeer::PassOn(QKeyEvent& event)
{
    QWidget* editor = parentWidget() == nullptr ? nullptr : parentWidget()->window()->focusWidget();
    if (editor != nullptr)
        QCoreApplication::sendEvent(editor, &event);
    else if (list != nullptr)
        list->TakeKey(event);
}

void WindowPeer::Press(const QPointer<ButtonPeer>& button)
{
    if (button != nullptr)
        button->click();
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
    else if (isVisible() && !IsPopUp())
        frameTimer.start();
}

// Once only: a window manager that insists on a frame gets it.
void WindowPeer::ReportFrame()
{
    const QRect seen = geometry();
    if (seen == told || seen == reported || !isVisible() || isMinimized())
        return;
    reported = seen;
    const BRect frame = FrameOf(seen);
    PostFrameChanged(handler, seen.size() == told.size() ? frame : limits.Bounded(frame));
}

} // namespace wren
