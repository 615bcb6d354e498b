#include "tests/desktop/hands/WindowManager.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

namespace {

bool TakesTheKeyboard(const QWindow* window)
{
    return window != nullptr && window->type() != Qt::Popup && window->type() != Qt::ToolTip &&
           !window->flags().testFlag(Qt::WindowDoesNotAcceptFocus);
}

} // namespace

WindowManager::WindowManager(QWidget& main) : main(main)
{
    main.installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* window) {
        if (!TakesTheKeyboard(window) && this->main.isVisible())
            this->main.activateWindow();
    });
}

void WindowManager::LookAround()
{
    const QWindow* active = QGuiApplication::focusWindow();
    if (main.isVisible() && (active == nullptr || !active->isVisible()))
        main.activateWindow();
}

bool WindowManager::eventFilter(QObject*, QEvent* event)
{
    return event->type() == QEvent::ActivationChange && !main.isActiveWindow() &&
           !TakesTheKeyboard(QGuiApplication::focusWindow());
}
