// Views from interface files; InterfaceFile and NibControls do not include views.
#include "vetch/interface/BStringView.h"
#include "vetch/interface/BView.h"
#include "vetch/interface/InterfaceFile.h"
#include "vetch/interface/NibControls.h"

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

BView* MakeViewFromNib(__CFBundle* bundle, const char* nib, const char* part)
{
    const NibPart read = ReadNibPart(bundle, nib, part).value_or(NibPart());
    auto* view = new BView({0, 0, read.frame.Width(), read.frame.Height()}, part, 0, 0);
    NibControls::Lay(*view, read);
    return view;
}

} // namespace vetch
