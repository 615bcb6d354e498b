#include "vetch/app/Dispatch.h"

#include "vetch/app/LooperState.h"
#include "vetch/app/Registry.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <vector>

namespace vetch {

namespace {

// The handler's target after its filters; null when they drop the message.
BHandler* FilteredBy(BHandler* handler, LooperToken looper, BMessage* message)
{
    // By index, not by iterator: a filter may add filters.
    for (size_t i = 0; i < handler->Filters().size(); ++i) {
        BHandler* target = handler;
        if (handler->Filters()[i]->Filter(message, &target) == B_SKIP_MESSAGE || !target)
            return nullptr;
        if (target != handler)
            return FindHandlerOf(target->Token(), looper);
    }
    return handler;
}

// Filters redirect the message until a target repeats. A handler's filters see it once: two that redirect to each other
// stop.
BHandler* Filtered(BHandler* handler, LooperToken looper, BMessage* message)
{
    std::vector<BHandler*> seen;
    while (handler && std::find(seen.begin(), seen.end(), handler) == seen.end()) {
        seen.push_back(handler);
        handler = FilteredBy(handler, looper, message);
    }
    return handler;
}

void DispatchUnguarded(BLooper& looper, LooperToken token, Envelope& envelope)
{
    BHandler* handler = FindHandlerOf(envelope.handler, token);
    if (handler)
        handler = Filtered(handler, token, &envelope.message);
    if (handler)
        looper.DispatchMessage(&envelope.message, handler);
}

} // namespace

void Dispatch(BLooper& looper, LooperToken token, Envelope& envelope)
{
    try {
        DispatchUnguarded(looper, token, envelope);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vetch: a message was given up with an exception: %s\n", error.what());
    } catch (...) {
        std::fprintf(stderr, "vetch: a message was given up with an exception\n");
    }
}

} // namespace vetch
