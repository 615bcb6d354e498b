// Handing one message to its handler.
#pragma once

#include "vetch/app/BLooper.h"

namespace vetch {

struct Envelope;

// Runs the filters and dispatches, on the looper's thread with its lock held. A handler that is gone, or belongs to
// another looper by now, receives nothing. An exception that escapes is reported on standard error and ends there.
void Dispatch(BLooper& looper, LooperToken token, Envelope& envelope);

} // namespace vetch
