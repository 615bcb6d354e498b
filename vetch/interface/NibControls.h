// The controls of an interface file that no view has taken yet.
#pragma once

#include "vetch/interface/InterfaceFile.h"

#include <vector>

class BView;

namespace vetch {

class NibControls {
public:
    // Makes 'view' the container of 'part': adds its labels and groups at once and keeps the other controls for Take().
    static void Lay(BView& view, const NibPart& part);

    const NibControl* Find(long item) const; // null when there is none left
    void Take(long item);                    // Find() does not return it afterwards

private:
    std::vector<NibControl> controls;
};

} // namespace vetch
