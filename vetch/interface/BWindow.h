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

// The side that shows a window on the screen.
enum class ShownBy {
    Display, // the display makes, numbers and lists it
    Host     // the host shows its document windows itself; a display ignores them
};

} // namespace vetch

// Made hidden, on any thread. It lives and dies as a BLooper; the first Show() is its Run(). A model, as its views are:
// its changes go to the display as copies, and the user's actions arrive as messages. Touched by its creator before the
// first Show(), afterwards on its own thread or under its lock.
class BWindow : public BLooper {
public:
    BWindow(BRect frame, const char* title, long look, long feel, uint32 flags,
            vetch::Service service = vetch::Service::OwnThread, vetch::ShownBy shownBy = vetch::ShownBy::Display);

    // Reads the part 'window' of the interface file 'nib' in the bundle's resources. The window is empty without
    // bundle, file or part; vetch::ReportInterfaceProblem reports faults of the file.
    BWindow(__CFBundle* bundle, const char* nib, const char* window);
    ~BWindow() override;

    // Idempotent, as is Hide(). Does nothing after an accepted quit. A window that gets no thread quits.
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
    BRect Frame() const;  // the content's, on the screen
    BRect Bounds() const; // origin 0, 0
    void MoveTo(float x, float y);
    void ResizeTo(float width, float height); // without limits
    // Limits for later resizes by the user; if they contradict each other the minimum wins.
    void SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
    void SetTitle(const char* title);
    const std::string& Title() const { return title; }

    void AddChild(BView* view);                   // takes ownership
    void AddChildFromNib(BView* view, long item); // as BView::AddChildFromNib
    BView* FocusView() const { return focus; }

    void Activate(bool active);
    bool IsActive() const;
    bool IsShowingSheet() const; // a panel or alert is attached to this window
    void SetShowingSheet(bool showing);
    BPoint ConvertToScreen(BPoint point) const;
    WindowRef NativeWindow() const;

    // Handles the user's actions on the window itself (the display's codes). A window whose MessageReceived() skips the
    // base class still follows its frame.
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
    std::unique_ptr<BView> root; // fills the window; its children are the window's views
    BView* focus = nullptr;
};
