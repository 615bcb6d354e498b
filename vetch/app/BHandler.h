// Receives messages that a looper dispatches.
#pragma once

#include "vetch/app/BMessageFilter.h"
#include "vetch/support/NoticeReceiver.h"
#include "vetch/support/Types.h"

#include <memory>
#include <vector>

class BLooper;
class BMessage;

namespace vetch {

// Names a handler for as long as it lives and never again: messages and displays hold tokens, so that what is sent to a
// handler that has died is dropped.
using HandlerToken = uint32;
constexpr HandlerToken kNoHandler = 0;

} // namespace vetch

// A handler belongs to one looper at most, and is touched only on its thread or under its lock; before a window's first
// Show() by its creator alone.
class BHandler : public vetch::NoticeReceiver {
public:
    BHandler();
    ~BHandler() override;

    virtual void MessageReceived(BMessage* message); // ignores it
    virtual BLooper* Looper() const;                 // null until it has one, and when that is gone

    // Filters see each message before it is dispatched here, in the order in which they came. One that changes the
    // target ends this handler's; the new target's follow, unless they have seen the message already. Takes 'filter'
    // over.
    void AddFilter(BMessageFilter* filter);
    const std::vector<std::unique_ptr<BMessageFilter>>& Filters() const { return filters; }

    void NoticeReceived(uint32 what, const BMessage* message) override; // as MessageReceived, with that 'what'

    vetch::HandlerToken Token() const { return token; }
    void SetLooper(BLooper* looper); // the framework calls this when a view joins or leaves a window

private:
    const vetch::HandlerToken token;
    std::vector<std::unique_ptr<BMessageFilter>> filters;
};

namespace vetch {

// The live handler with that token, or null. The result is safe to use only where nothing can destroy it meanwhile: on
// its looper's thread, or on the document thread.
BHandler* FindHandler(HandlerToken token);

} // namespace vetch
