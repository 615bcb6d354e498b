#include "wren/desktop/display/Peers.h"

#include "wren/desktop/display/FontTable.h"
#include "wren/desktop/display/ListPeer.h"
#include "wren/desktop/display/Questions.h"
#include "wren/desktop/display/UserPosts.h"
#include "wren/desktop/display/ViewPeer.h"
#include "wren/desktop/display/WindowPeer.h"

#include <QApplication>
#include <QEvent>
#include <QFileDialog>
#include <QLineEdit>

#include <algorithm>

namespace wren {

namespace {

bool IsPress(const QEvent& event)
{
    return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::NonClientAreaMouseButtonPress;
}

// A press on the window manager's frame is not told, but what comes of it.
bool IsDrag(const QEvent& event)
{
    return event.spontaneous() && (event.type() == QEvent::Move || event.type() == QEvent::Resize);
}

} // namespace

Peers::Peers(const FontTable& fonts, int scrollBarWidth) : fonts(fonts), scrollBarWidth(scrollBarWidth)
{
    qApp->installEventFilter(this);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state != Qt::ApplicationActive)
            DismissPopUps(nullptr);
    });
}

Peers::~Peers()
{
    for (const auto& [token, window] : windows)
        delete window;
    for (const auto& [token, panel] : panels)
        delete panel;
}

void Peers::Make(const vetch::WindowDescription& window)
{
    if (window.ofPlugin)
        windows[window.window] = new WindowPeer(window, {keys, fonts, keptLine, scrollBarWidth}, main);
}

void Peers::Make(const vetch::ViewDescription& view)
{
    WindowPeer* window = Find(view.window);
    if (window == nullptr)
        return;
    if (ViewPeer* peer = window->MakeView(view, static_cast<int>(fonts.LineHeight(view.fontSize))))
        views[view.view] = {&peer->Widget(), peer, view.window};
}

void Peers::Beep() const
{
    QApplication::beep();
    if (onBeep)
        onBeep();
}

void Peers::Open(const vetch::PanelDescription& panel)
{
    panels[panel.panel] = OpenFilePanel(panel, main);
}

// Not at once: its own event may be on its way through it.
void Peers::Close(vetch::LooperToken token)
{
    ClosePanel(token);
    if (WindowPeer* window = Find(token)) {
        window->Withdraw();
        window->deleteLater();
    }
    if (windows.erase(token) > 0)
        std::erase_if(views, [token](const auto& entry) { return entry.second.window == token; });
}

void Peers::ClosePanel(vetch::LooperToken token)
{
    const auto found = panels.find(token);
    if (found == panels.end())
        return;
    if (QFileDialog* dialog = found->second) {
        dialog->disconnect(dialog); // it answers nobody
        dialog->hide();
        dialog->deleteLater();
    }
    panels.erase(found);
}

WindowPeer* Peers::Find(vetch::LooperToken token) const
{
    const auto found = windows.find(token);
    return found == windows.end() ? nullptr : found->second.data();
}

ViewPeer* Peers::FindView(vetch::HandlerToken token) const
{
    const auto found = views.find(token);
    return found == views.end() || found->second.widget == nullptr ? nullptr : found->second.peer;
}

void Peers::MoveView(vetch::HandlerToken token, BRect frame)
{
    const auto found = views.find(token);
    if (found == views.end() || found->second.widget == nullptr)
        return;
    if (WindowPeer* window = Find(found->second.window))
        window->PlaceView(*found->second.widget, frame);
}

void Peers::Focus(vetch::LooperToken token, vetch::HandlerToken view)
{
    ViewPeer* peer = FindView(view);
    if (WindowPeer* window = Find(token))
        window->FocusOn(peer == nullptr ? nullptr : &peer->Widget());
}

void Peers::Publish()
{
    for (const auto& [token, view] : views)
        if (view.widget != nullptr)
            view.peer->Publish();
}

template <class Wanted>
WindowPeer* Peers::Newest(Wanted wanted) const
{
    const auto found = std::find_if(windows.rbegin(), windows.rend(), [&wanted](const auto& entry) {
        return entry.second != nullptr && entry.second->isVisible() && wanted(*entry.second);
    });
    return found != windows.rend() ? found->second : nullptr;
}

WindowPeer* Peers::FrontList() const
{
    return Newest([](const WindowPeer& window) { return !window.IsPopUp() && window.List() != nullptr; });
}

// The dialog is hidden by then: it asks after it has gone.
QString Peers::TypedText() const
{
    for (auto window = windows.rbegin(); window != windows.rend(); ++window)
        if (const auto* field = window->second == nullptr ? nullptr : window->second->findChild<QLineEdit*>())
            return field->text();
    return {};
}

bool Peers::IsPopUpVisible() const
{
    return Newest([](const WindowPeer& window) { return window.IsPopUp(); }) != nullptr;
}

bool Peers::eventFilter(QObject* object, QEvent* event)
{
    if (IsPress(*event) && object->isWidgetType())
        DismissPopUps(static_cast<QWidget*>(object)->window());
    else if (object == main && IsDrag(*event))
        DismissPopUps(nullptr);
    return false;
}

void Peers::DismissPopUps(const QWidget* pressed)
{
    for (const auto& [token, window] : windows)
        if (window != nullptr && window != pressed && window->IsPopUp() && window->isVisible())
            PostQuitRequested(window->Handler());
}

} // namespace wren
