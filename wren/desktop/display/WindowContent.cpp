#include "wren/desktop/display/WindowContent.h"

#include "vetch/display/WindowKinds.h"
#include "wren/desktop/display/ControlPeers.h"
#include "wren/desktop/display/FontTable.h"
#include "wren/desktop/display/Frames.h"
#include "wren/desktop/display/ListPeer.h"
#include "wren/desktop/display/TextPeer.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScrollBar>
#include <QSizeGrip>

#include <algorithm>

namespace wren {

namespace {

using Kind = vetch::ViewDescription::Kind;

constexpr int kBorder = 1; // of a bare window, inside its frame

bool ReadsBefore(const QWidget* one, const QWidget* other)
{
    return std::pair(one->y(), one->x()) < std::pair(other->y(), other->x());
}

void Press(const QPointer<ButtonPeer>& button)
{
    if (button != nullptr)
        button->click();
}

// A Wayland compositor gives the keyboard to every window with a title bar, and so takes it from the text.
bool TitleBarsTakeTheKeyboard()
{
    return QGuiApplication::platformName().startsWith("wayland");
}

} // namespace

WindowStyle StyleOf(const vetch::WindowDescription& window)
{
    const bool isPopUp = window.look == B_BORDERED_WINDOW_LOOK;
    const bool avoidsFocus = isPopUp || (window.flags & B_AVOID_FOCUS) != 0;
    return {isPopUp, window.look == B_FLOATING_WINDOW_LOOK, avoidsFocus,
            isPopUp || (avoidsFocus && TitleBarsTakeTheKeyboard())};
}

WindowContent::WindowContent(vetch::LooperToken window, const WindowStyle& style, const Surroundings& surroundings,
                             QWidget* parent)
    : QWidget(parent), style(style), surroundings(surroundings)
{
    setObjectName(NameOf(window));
    if (style.isBare)
        setContentsMargins(kBorder, kBorder, kBorder, kBorder);
}

QString WindowContent::NameOf(vetch::LooperToken window)
{
    return QStringLiteral("window %1").arg(window);
}

QString WindowContent::ItemName(long item)
{
    return QStringLiteral("item %1").arg(item);
}

// It has no other border. The colour is visible on light and on dark backgrounds.
void WindowContent::paintEvent(QPaintEvent*)
{
    if (!style.isBare)
        return;
    QPainter painter(this);
    painter.setPen(Qt::gray);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

ViewPeer* WindowContent::MakeView(const vetch::ViewDescription& view, int lineHeight, QSize grown)
{
    ViewPeer* peer = NewPeer(view, lineHeight);
    QWidget& widget = peer->Widget();
    widget.setObjectName(ItemName(view.item));
    widget.setFont(view.kind == Kind::List ? surroundings.fonts.ListFont(view.fontSize)
                                           : FontTable::FontOf(view.fontSize));
    views.push_back({&widget, view.frame, view.followsWindow, view.kind == Kind::List});
    LayOut(views.back(), grown);
    widget.show();
    return peer;
}

ViewPeer* WindowContent::NewPeer(const vetch::ViewDescription& view, int lineHeight)
{
    switch (view.kind) {
    case Kind::List:
        return NewList(view, lineHeight);
    case Kind::Button:
        return NewButton(view);
    case Kind::CheckBox:
        return new CheckBoxPeer(view, this);
    case Kind::Label:
        return new LabelPeer(view, this);
    case Kind::Group:
        return new GroupPeer(view, this);
    case Kind::Text:
        break;
    }
    TextPeer* peer = nullptr;
    if (view.multiLine)
        peer = new AreaPeer(view.view, this);
    else
        peer = new LinePeer(view.view, this);
    peer->SetText(view.text);
    return peer;
}

ListPeer* WindowContent::NewList(const vetch::ViewDescription& view, int lineHeight)
{
    auto* peer = new ListPeer(view.view, surroundings.keys, lineHeight, this);
    if (list == nullptr)
        list = peer;
    if (style.avoidsFocus)
        peer->setFocusPolicy(Qt::NoFocus);
    if (style.isFloating) {
        peer->ShortenPaths();
        peer->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        peer->addScrollBarWidget(new QSizeGrip(peer), Qt::AlignBottom);
    }
    return peer;
}

ButtonPeer* WindowContent::NewButton(const vetch::ViewDescription& view)
{
    auto* peer = new ButtonPeer(view, this);
    peer->setDefault(buttons.empty());
    buttons.push_back(peer);
    return peer;
}

ListPeer* WindowContent::List() const
{
    return list;
}

void WindowContent::PressFirstButton()
{
    if (!buttons.empty())
        Press(buttons.front());
}

void WindowContent::PressLastButton()
{
    if (!buttons.empty())
        Press(buttons.back());
}

void WindowContent::PlaceView(const QWidget& widget, BRect frame, QSize grown)
{
    const auto found = std::ranges::find(views, &widget, [](const View& view) { return view.widget.data(); });
    if (found == views.end())
        return;
    found->frame = frame;
    LayOut(*found, grown);
}

void WindowContent::LayOut(QSize grown)
{
    for (const View& view : views)
        LayOut(view, grown);
}

void WindowContent::LayOut(const View& view, QSize grown)
{
    if (view.widget == nullptr)
        return;
    QRect place = RectOf(view.frame);
    if (view.scrolls)
        place.setWidth(place.width() + surroundings.scrollBarWidth); // the scroll bar stands beside the frame
    if (view.followsWindow)
        place.setSize(place.size() + grown);
    view.widget->setGeometry(view.scrolls ? place.intersected(contentsRect()) : place);
}

void WindowContent::OrderTabs()
{
    std::vector<QWidget*> order;
    for (const View& view : views)
        if (view.widget != nullptr && view.widget->focusPolicy() != Qt::NoFocus)
            order.push_back(view.widget);
    std::ranges::sort(order, ReadsBefore);
    for (size_t i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

} // namespace wren
