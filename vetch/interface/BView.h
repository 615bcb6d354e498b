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

// A model: it holds the truth, and tells the display of every change once it is in a window.
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
    void MakeFocus(bool focus = true); // the window's focus view, at most one

    void AddChild(BView* child); // takes it over
    const std::vector<std::unique_ptr<BView>>& Children() const { return children; }

    // Attaches 'child' to the control with that item number of the interface file that this view was made from: frame,
    // label and kind come from there. Takes it over either way; with no such number it stays unattached and harmless.
    void AddChildFromNib(BView* child, long item);

    void SetFont(const BFont* font);
    void GetFont(BFont* font) const;
    float StringWidth(const char* text) const; // pixels, in this view's font. Any thread

    // The item number in the interface file; 0 for a view that came from none.
    long Item() const { return item; }

protected:
    // The view has joined a window with all its ancestors; it tells the display of itself here.
    virtual void AttachedToWindow();
    // Takes what the interface file says of this control: its label, its text. False when the control there is of
    // another kind than this view.
    virtual bool SetUpFromNib(const vetch::NibControl& control);

    // What the display is told of any view in a window; the kind and the text are the view's own to add.
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
    std::unique_ptr<vetch::NibControls> nib;        // of a view that was made from an interface file
    std::vector<std::unique_ptr<BView>> unattached; // what the interface file had no place for
    long item = 0;
};
