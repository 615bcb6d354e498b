#include "vetch/interface/NibControls.h"

#include <algorithm>

namespace vetch {

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
