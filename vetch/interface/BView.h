// A rectangle in a window, and the views in it.
#pragma once

#include "vetch/app/BHandler.h"
#include "vetch/interface/BFont.h"
#include "vetch/support/Geometry.h"

#include <memory>
#include <string>
#include <vector>

class BWindow;

namespace vetch {
class NibControls;
struct NibControl;
struct ViewDescription;
} // namespace vetch

constexpr uint32 B_FOLLOW_ALL_SIDES = 15; // resizing mode: the view grows and shrinks with its parent

// A model: it holds the state, and once in a window it reports every change to the display.
//
// The view tree owns its children. Touched on its window's thread or under its lock, except where noted.
class BView : public BHandler {
public:
    BView();
    BView(BRect frame, const char* name, uint32 resizingMode, uint32 flags);
    ~BView() override;

    BRect Bounds() const; // origin 0, 0
    BRect Frame() const;  // in the parent's coordinates
    BView* Parent() const { return parent; }
    BWindow* Window() const { return window; }
    const std::string& Name() const { return name; }
    uint32 ResizingMode() const { return resizingMode; }
    void MakeFocus(bool focus = true); // a window has at most one focus view

    void AddChild(BView* child); // takes ownership
    const std::vector<std::unique_ptr<BView>>& Children() const { return children; }

    // Attaches 'child' to the control with that item number of this view's interface file, which gives it frame, label
    // and kind. Takes ownership in any case; a child without a matching number stays unattached and harmless.
    void AddChildFromNib(BView* child, long item);

    void SetFont(const BFont* font);
    void GetFont(BFont* font) const;
    float StringWidth(const char* text) const; // pixels, in this view's font. Any thread

    // The item number in the interface file; 0 without one.
    long Item() const { return item; }

protected:
    // Called when the view has joined a window with all its ancestors; announces the view to the display.
    virtual void AttachedToWindow();
    // Takes this control's label and text from the interface file. False when the file's control is of another kind.
    virtual bool SetUpFromNib(const vetch::NibControl& control);

    // What every view in a window reports to the display; derived classes add kind and text.
    vetch::ViewDescription Description() const;

private:
    friend class BWindow;
    friend class BScrollView;
    friend class vetch::NibControls;
    void Join(BWindow* newWindow);
    void SetFrame(BRect newFrame);
    void ParentChanged(float widthChange, float heightChange);
    BRect FrameInWindow() const;

    BRect frame;
    std::string name;
    uint32 resizingMode = 0;
    BFont font;
    BView* parent = nullptr;
    BWindow* window = nullptr;
    std::vector<std::unique_ptr<BView>> children;
    std::unique_ptr<vetch::NibControls> nib;        // of a view from an interface file
    std::vector<std::unique_ptr<BView>> unattached; // children without a control in the file
    long item = 0;
};
