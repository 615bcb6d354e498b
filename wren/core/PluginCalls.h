// The one gate through which events reach the plug-in.
#pragma once

#include "wren/core/EventRecord.h"
#include "wren/core/HostRecord.h"

#include <deque>

namespace wren {

// Document thread. One call of the plug-in at a time: while it runs, even inside a menu or an alert of its own, later
// events are kept and sent when it has returned. An event whose document has been closed meanwhile is dropped.
class PluginCalls {
public:
    explicit PluginCalls(const HostParts& parts); // copied; the parts are borrowed

    // The answer to an event that was kept, or came after kUnload, is that nothing was handled.
    EventAnswer Send(const EventRecord& event);

    bool IsUnloaded() const { return unloaded; }

private:
    EventAnswer Call(const EventRecord& event);

    const HostParts parts;
    std::deque<EventRecord> kept;
    bool unloaded = false;
};

} // namespace wren
