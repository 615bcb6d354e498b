#include "wren/desktop/display/ControlPeers.h"

#include "wren/desktop/display/ShownText.h"
#include "wren/desktop/display/UserPosts.h"

namespace wren {

ButtonPeer::ButtonPeer(const vetch::ViewDescription& view, QWidget* parent) : QPushButton(ShownLabel(view.text), parent)
{
    setAutoDefault(true); // Enter presses the button that has the keyboard
    connect(this, &QPushButton::clicked, this, [button = view.view] { PostPressed(button); });
}

CheckBoxPeer::CheckBoxPeer(const vetch::ViewDescription& view, QWidget* parent)
    : QCheckBox(ShownLabel(view.text), parent)
{
    connect(this, &QCheckBox::clicked, this, [box = view.view](bool on) { PostChecked(box, on); });
}

void CheckBoxPeer::SetChecked(bool on)
{
    setChecked(on);
}

LabelPeer::LabelPeer(const vetch::ViewDescription& view, QWidget* parent) : QLabel(ShownText(view.text), parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

GroupPeer::GroupPeer(const vetch::ViewDescription& view, QWidget* parent) : QGroupBox(ShownLabel(view.text), parent)
{
    lower();
}

} // namespace wren
