// A proxy for a host window.
#pragma once

#include "vetch/interface/BWindow.h"

// Passes a window's events on to the framework's behaviour. Calls into the target are qualified, so that overrides that
// call the proxy do not recurse. Host code derives from it and sets the target, which is borrowed; without one it does
// nothing. Target's thread. The plug-in makes no proxies.
class WrenWindowProxy {
public:
    virtual ~WrenWindowProxy() = default;

    virtual long Run() { return 0; } // the proxy does not start the target's loop
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
