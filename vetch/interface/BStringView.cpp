#include "vetch/interface/BStringView.h"

#include "vetch/interface/InterfaceFile.h"

BStringView::BStringView(const vetch::NibControl& label)
    : BView(label.frame, "", 0, 0), kind(label.kind), text(label.text)
{
}

void BStringView::AttachedToWindow()
{
    vetch::ViewDescription description = Description();
    description.kind = kind;
    description.text = text;
    vetch::CurrentDisplay()->Apply(vetch::ViewMade{description});
}
