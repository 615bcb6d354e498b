// The names of loopers and handlers, and how to reach them by name. Any thread.
#pragma once

#include "vetch/support/Types.h"

#include <vector>

class BHandler;
class BLooper;
class BMessage;

namespace vetch {

// Names a handler for as long as it lives and never again: messages and displays hold tokens, so that what is sent to a
// handler that has died is dropped.
using HandlerToken = uint32;
constexpr HandlerToken kNoHandler = 0;

using LooperToken = uint32; // names a looper for as long as it lives and never again

// Where a looper's messages are dispatched.
enum class Service {
    OwnThread,  // on a thread of its own, started by Run()
    Application // by the application's loop, on the document thread: document and preference windows
};

// The live handler with that token, or null. The result is safe to use only where nothing can destroy it meanwhile: on
// its looper's thread, or on the document thread.
BHandler* FindHandler(HandlerToken token);

// The live looper with that token, or null; safe to use on the document thread.
BLooper* FindLooper(LooperToken token);

// The live loopers' tokens, the application's among them, in the order in which they were made.
std::vector<LooperToken> Loopers();

// Posts to a handler by token, to its looper's queue; B_ERROR when it is gone.
status_t PostToHandler(HandlerToken handler, const BMessage& message);

} // namespace vetch
