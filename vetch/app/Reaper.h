// Destroys loopers that have quit.
#pragma once

#include "vetch/app/BLooper.h"

namespace vetch {

// Document thread.
struct Reaper {
    // Waits for the thread of a looper with an accepted quit and destroys it; does nothing while that is not allowed
    // yet.
    static void Destroy(BLooper* looper);

    // Destroys the looper that ended first; false when there is none.
    static bool ReapOne();
};

// Call it on a thread that has made a looper: when the thread ends, its loopers that never ran go to the document
// thread.
void HandOverWhenMakerEnds();

} // namespace vetch
