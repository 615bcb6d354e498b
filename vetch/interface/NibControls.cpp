#include "vetch/interface/NibControls.h"

#include "vetch/interface/BStringView.h"

#include <algorithm>

namespace vetch {

namespace {

bool StandsByItself(const NibControl& control)
{
    return control.kind == ViewDescription::Kind::Label || control.kind == ViewDescription::Kind::Group;
}

} // namespace

void NibControls::Lay(BView& view, const NibPart& part)
{
    view.nib = std::make_unique<NibControls>();
    for (const NibControl& control : part.controls) {
        if (StandsByItself(control))
            view.AddChild(new BStringView(control));
        else
            view.nib->controls.push_back(control);
    }
}

const NibControl* NibControls::Find(long item) const
{
    const auto found = std::ranges::find(controls, item, &NibControl::item);
    return item == 0 || found == controls.end() ? nullptr : &*found;
}

void NibControls::Take(long item)
{
    std::erase_if(controls, [item](const NibControl& control) { return control.item == item; });
}

} // namespace vetch
