// What a view that was made from an interface file still has to give away.
#pragma once

#include "vetch/interface/InterfaceFile.h"

#include <vector>

class BView;

namespace vetch {

class NibControls {
public:
    // Makes 'view' the container of 'part': its labels and groups are added at once, its other controls wait to be
    // taken.
    static void Lay(BView& view, const NibPart& part);

    const NibControl* Find(long item) const; // null when there is none left
    void Take(long item);                    // it is not found any more

private:
    std::vector<NibControl> controls;
};

} // namespace vetch
