#include "vetch/interface/BControl.h"

#include "vetch/interface/BWindow.h"
#include "vetch/interface/InterfaceFile.h"

BControl::BControl(vetch::ViewDescription::Kind kind) : kind(kind) {}

void BControl::AttachedToWindow()
{
    if (!HasTarget())
        SetTarget(Window());
    vetch::ViewDescription description = Description();
    description.kind = kind;
    Describe(description);
    vetch::CurrentDisplay()->Apply(vetch::ViewMade{description});
}

bool BControl::SetUpFromNib(const vetch::NibControl& control)
{
    if (control.kind != kind)
        return false;
    label = control.text;
    return true;
}

void BControl::Describe(vetch::ViewDescription& description) const
{
    description.text = label;
}
