// Buttons, check boxes and what only stands there to be read.
#pragma once

#include "vetch/display/Display.h"
#include "wren/desktop/display/ViewPeer.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace wren {

class ButtonPeer : public QPushButton, public ViewPeer {
public:
    ButtonPeer(const vetch::ViewDescription& view, QWidget* parent);

    QWidget& Widget() override { return *this; }
};

class CheckBoxPeer : public QCheckBox, public ViewPeer {
public:
    CheckBoxPeer(const vetch::ViewDescription& view, QWidget* parent);

    QWidget& Widget() override { return *this; }
    void SetChecked(bool on) override;
};

class LabelPeer : public QLabel, public ViewPeer {
public:
    LabelPeer(const vetch::ViewDescription& view, QWidget* parent);

    QWidget& Widget() override { return *this; }
};

// Stands behind the controls that it frames, which are not its children.
class GroupPeer : public QGroupBox, public ViewPeer {
public:
    GroupPeer(const vetch::ViewDescription& view, QWidget* parent);

    QWidget& Widget() override { return *this; }
};

} // namespace wren
