// Stands for a window of the host's.
#pragma once

#include "vetch/interface/BWindow.h"

// Passes on what happens to a window, to the framework's own behaviour of it: calls into the target are qualified, so
// that a target whose overrides call the proxy does not go round in circles. Host code derives from it and sets the
// target, which is borrowed; nothing is called without one, and the thread is the target's. The plug-in makes none.
class WrenWindowProxy {
public:
    virtual ~WrenWindowProxy() = default;

    virtual long Run() { return 0; } // the target's loop is not the proxy's to start
    virtual void Quit() { fTarget->BWindow::Quit(); }
    virtual void MessageReceived(BMessage* message) { fTarget->BLooper::MessageReceived(message); }
    virtual void FrameMoved(BPoint origin) { fTarget->BWindow::FrameMoved(origin); }
    virtual void FrameResized(float width, float height) { fTarget->BWindow::FrameResized(width, height); }
    virtual void ScreenChanged(BRect, color_space) {}
    virtual void Minimize(bool) {}
    virtual void Zoom(BPoint origin, float width, float height) { fTarget->BWindow::Zoom(origin, width, height); }
    virtual void MenusBeginning() {}
    virtual void MenusEnded() {}
    virtual void WindowActivated(bool active) { fTarget->BWindow::WindowActivated(active); }
    virtual void Show() { fTarget->BWindow::Show(); }
    virtual void Hide() { fTarget->BWindow::Hide(); }
    virtual bool QuitRequested() { return fTarget->BLooper::QuitRequested(); }

    BWindow* Target() const { return fTarget; }

protected:
    BWindow* fTarget = nullptr;
};
