// Tokens of loopers and handlers, and access by token. Any thread.
#pragma once

#include "vetch/support/Types.h"

#include <vector>

class BHandler;
class BLooper;
class BMessage;

namespace vetch {

// Never reused. Messages and displays hold tokens, so that a message to a dead handler is dropped.
using HandlerToken = uint32;
constexpr HandlerToken kNoHandler = 0;

using LooperToken = uint32; // never reused

// Where a looper's messages are dispatched.
enum class Service {
    OwnThread,  // on the thread that Run() starts
    Application // by the application's loop, on the document thread: document and preference windows
};

// The live handler with that token, or null. Use the result only where nothing can destroy it: on its looper's thread
// or on the document thread.
BHandler* FindHandler(HandlerToken token);

// The live looper with that token, or null; use it on the document thread.
BLooper* FindLooper(LooperToken token);

// The tokens of all live loopers, with the application, in the order of creation.
std::vector<LooperToken> Loopers();

// Posts to the queue of the handler's looper; B_ERROR when the handler is gone.
status_t PostToHandler(HandlerToken handler, const BMessage& message);

} // namespace vetch
