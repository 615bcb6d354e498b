// What stands on the screen for a view of the framework: a list or a control of Qt's.
#pragma once

#include "vetch/support/Geometry.h"

#include <string>

class QWidget;

namespace wren {

// A peer is a widget, and dies with it. What the framework says and the widget has no notion of does nothing. Nothing
// that is set here is posted back as if the user had done it. GUI thread.
class ViewPeer {
public:
    virtual ~ViewPeer() = default;

    virtual QWidget& Widget() = 0;

    virtual void AddItem(long /*index*/, const std::string& /*text*/) {}
    virtual void RemoveItem(long /*index*/) {}
    virtual void ChangeItem(long /*index*/, const std::string& /*text*/) {}
    virtual void SelectItem(long /*index*/) {} // -1: none
    virtual void SetSelectionColour(rgb_color) {}
    virtual void SetText(const std::string& /*text*/) {}
    virtual void SelectText(long /*start*/, long /*end*/) {} // bytes
    virtual void SetChecked(bool /*on*/) {}

    virtual void Publish() {} // a number of changes is done: now show them
};

} // namespace wren
