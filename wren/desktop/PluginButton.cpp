#include "wren/desktop/PluginButton.h"

#include <QContextMenuEvent>
#include <QMouseEvent>

namespace wren {

namespace {

constexpr int kHoldTime = 400; // milliseconds, about as long as other tool bars wait

} // namespace

PluginButton::PluginButton(const QIcon& icon, QWidget* parent) : QToolButton(parent)
{
    setIcon(icon);
    setText(tr("Symbols"));
    setToolButtonStyle(icon.isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonTextBesideIcon);
    setToolTip(tr("Looks up the symbol at the caret. Hold the button down for more."));
    setFocusPolicy(Qt::NoFocus);
    held.setSingleShot(true);
    held.setInterval(kHoldTime);
    connect(&held, &QTimer::timeout, this, &PluginButton::AskForPopUp);
}

void PluginButton::mousePressEvent(QMouseEvent* event)
{
    QToolButton::mousePressEvent(event);
    if (event->button() == Qt::LeftButton)
        held.start();
}

void PluginButton::mouseReleaseEvent(QMouseEvent* event)
{
    const bool clicked = event->button() == Qt::LeftButton && held.isActive() && rect().contains(event->pos());
    held.stop();
    QToolButton::mouseReleaseEvent(event);
    if (clicked)
        emit Clicked(event->modifiers());
}

void PluginButton::contextMenuEvent(QContextMenuEvent*)
{
    AskForPopUp();
}

// The menu runs a loop of its own and swallows the mouse going up.
void PluginButton::AskForPopUp()
{
    held.stop();
    setDown(false);
    emit PopUpAsked();
}

} // namespace wren
