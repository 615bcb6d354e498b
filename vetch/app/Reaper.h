// Destroying loopers that have quit.
#pragma once

#include "vetch/app/BLooper.h"

namespace vetch {

// Document thread.
struct Reaper {
    // Destroys a looper that has accepted its quit, after waiting for its thread; nothing while that may not be done
    // yet.
    static void Destroy(BLooper* looper);

    // Destroys the looper that ended first; false when there is none.
    static bool ReapOne();
};

// For the thread that has just made a looper: when it ends, what it made and never ran goes to the document thread.
void MindMaker();

} // namespace vetch
