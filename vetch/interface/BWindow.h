// A window: a looper with a frame and views in it.
#pragma once

#include "vetch/app/BLooper.h"
#include "vetch/display/WindowKinds.h"
#include "vetch/interface/BView.h"
#include "vetch/interface/Carbon.h"
#include "vetch/support/Geometry.h"

#include <memory>
#include <string>

struct __CFBundle;

namespace vetch {

struct NibPart;

// Who puts a window on the screen.
enum class ShownBy {
    Display, // the display makes it, numbers it and lists it
    Host     // the host itself, as its document windows; a display ignores it
};

} // namespace vetch

// Made hidden. Its life and its thread are those of BLooper, the first Show() being its Run(). A model, as its views
// are: what it changes goes to the display as copies, and what the user does comes back as messages. Touched by its
// creator before the first Show(), afterwards on its own thread or under its lock. No constructor needs a certain
// thread.
class BWindow : public BLooper {
public:
    BWindow(BRect frame, const char* title, long look, long feel, uint32 flags,
            vetch::Service service = vetch::Service::OwnThread, vetch::ShownBy shownBy = vetch::ShownBy::Display);

    // Made from the part 'window' of the interface file 'nib' in the bundle's resources. An empty window when there is
    // no bundle, file or part; what was wrong with the file is reported by vetch::ReportInterfaceProblem.
    BWindow(__CFBundle* bundle, const char* nib, const char* window);
    ~BWindow() override;

    // Idempotent, as is Hide(). After an accepted quit it shows nothing. One that the system has no thread for is quit.
    virtual void Show();
    virtual void Hide();
    virtual void Minimize(bool minimize);
    virtual void Zoom(BPoint origin, float width, float height);
    virtual void FrameMoved(BPoint origin);
    virtual void FrameResized(float width, float height);
    virtual void WindowActivated(bool active);
    virtual void ScreenChanged(BRect screen, color_space depth);
    virtual void MenusBeginning();
    virtual void MenusEnded();

    bool IsHidden() const;
    BRect Frame() const;  // of the content, on the screen
    BRect Bounds() const; // origin 0, 0
    void MoveTo(float x, float y);
    void ResizeTo(float width, float height); // never clamped
    // Bound later resizes by the user only; where they contradict each other the minimum wins.
    void SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
    void SetTitle(const char* title);
    const std::string& Title() const { return title; }

    void AddChild(BView* view);                   // takes it over
    void AddChildFromNib(BView* view, long item); // as BView::AddChildFromNib
    BView* FocusView() const { return focus; }

    void Activate(bool active);
    bool IsActive() const;
    bool IsShowingSheet() const; // a panel or alert hangs on this window
    void SetShowingSheet(bool showing);
    BPoint ConvertToScreen(BPoint point) const;
    WindowRef NativeWindow() const;

    // What the user did to the window itself (the display's codes) is taken in here, so that windows whose
    // MessageReceived() goes past the window's follow their frame all the same.
    void DispatchMessage(BMessage* message, BHandler* handler) override;

protected:
    void QuitAccepted() override;

private:
    friend class BView;
    explicit BWindow(const vetch::NibPart& part);
    void SetFrame(BRect newFrame);
    void SetFocus(BView* view);
    void SetActive(bool nowActive);
    void TakeUserFrame(const BMessage& message);

    BRect frame;
    std::string title;
    const uint32 flags;
    bool hidden = true;
    bool active = false;
    bool showingSheet = false;
    std::unique_ptr<BView> root; // fills the window; the views added to the window are its children
    BView* focus = nullptr;
};
