// Live loopers and handlers by token: messages find their receivers without pointers that may dangle.
#pragma once

#include "vetch/app/Tokens.h"

#include <memory>
#include <vector>

namespace vetch {

class LooperState;

// Any thread. The registry's mutex is a leaf.

HandlerToken RegisterHandler(BHandler* handler);
void UnregisterHandler(HandlerToken handler);
void SetLooperOf(HandlerToken handler, LooperToken looper);        // 0: none
LooperToken LooperOf(HandlerToken handler);                        // 0: none, or the handler is gone
BHandler* FindHandlerOf(HandlerToken handler, LooperToken looper); // null when gone or with another looper

struct RegisteredLooper {
    BLooper* looper = nullptr;
    std::shared_ptr<LooperState> state;
};

void RegisterLooper(BLooper* looper, const std::shared_ptr<LooperState>& state);
void UnregisterLooper(LooperToken looper);
RegisteredLooper FindRegistered(LooperToken looper); // empty when it is gone
std::vector<RegisteredLooper> RegisteredLoopers();   // in the order of creation

} // namespace vetch
