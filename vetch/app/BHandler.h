// Receives messages that a looper dispatches.
#pragma once

#include "vetch/app/BMessageFilter.h"
#include "vetch/app/Tokens.h"
#include "vetch/support/NoticeReceiver.h"
#include "vetch/support/Types.h"

#include <memory>
#include <vector>

class BLooper;
class BMessage;

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
