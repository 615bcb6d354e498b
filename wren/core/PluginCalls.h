// The single path of events to the plug-in.
#pragma once

#include "wren/core/EventRecord.h"
#include "wren/core/HostRecord.h"

#include <deque>

namespace wren {

// Document thread. One plug-in call at a time: while it runs, even inside its own menu or alert, later events are
// queued and sent after it returns. An event whose document was closed meanwhile is dropped.
class PluginCalls {
public:
    explicit PluginCalls(const HostParts& parts); // copied; the parts are borrowed

    // The answer to a queued event, and to one after kUnload, is "not handled".
    EventAnswer Send(const EventRecord& event);

    bool IsUnloaded() const { return unloaded; }

private:
    EventAnswer Call(const EventRecord& event);

    const HostParts parts;
    std::deque<EventRecord> kept;
    bool unloaded = false;
};

} // namespace wren
