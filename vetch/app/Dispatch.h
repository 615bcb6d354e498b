// Hands one message to its handler.
#pragma once

#include "vetch/app/BLooper.h"

namespace vetch {

struct Envelope;

// Runs the filters and dispatches, on the looper's thread with its lock held. A handler that is gone, or belongs to
// another looper now, receives nothing. Reports an exception that escapes on standard error and does not pass it on.
void Dispatch(BLooper& looper, LooperToken token, Envelope& envelope);

} // namespace vetch
