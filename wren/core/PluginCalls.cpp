#include "wren/core/PluginCalls.h"

#include "vetch/app/Loop.h"
#include "wren/core/Documents.h"
#include "wren/core/Event.h"
#include "wren/core/HostObserver.h"
#include "wren/core/PluginBundle.h"

#include <utility>

namespace wren {

PluginCalls::PluginCalls(const HostParts& parts) : parts(parts) {}

EventAnswer PluginCalls::Send(const EventRecord& event)
{
    if (vetch::PluginCall::Depth() > 0) {
        kept.push_back(event);
        return {};
    }
    EventAnswer answer = Call(event);
    while (!kept.empty()) {
        const EventRecord next = std::move(kept.front());
        kept.pop_front();
        Call(next);
    }
    parts.documents.DestroyClosed();
    return answer;
}

EventAnswer PluginCalls::Call(const EventRecord& event)
{
    if (unloaded || (event.document != 0 && parts.documents.Find(event.document) == nullptr))
        return {};
    unloaded = event.event == Event::kUnload;
    const vetch::PluginCall call;
    HostRecord record(parts, event);
    const long returned = parts.bundle.Main(event.event, &record);
    parts.observer.Changed(EventAnswered{event.event, returned});
    return record.TakeAnswer(returned);
}

} // namespace wren
