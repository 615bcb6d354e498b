// What a window manager does with activation, and the offscreen platform does not: that one activates whatever is
// shown, and nothing when a window goes.
#pragma once

#include <QObject>

class QWidget;

// Menus, and windows that avoid the keyboard, leave the editor's window active; it becomes active again when a dialog
// goes. GUI thread.
class WindowManager : public QObject {
public:
    explicit WindowManager(QWidget& main); // borrowed

    void LookAround(); // nobody tells when the active window goes

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QWidget& main;
};
