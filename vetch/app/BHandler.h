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

// Belongs to one looper at most. Touched only on the looper's thread or under its lock; before a window's first Show()
// only by its creator.
class BHandler : public vetch::NoticeReceiver {
public:
    BHandler();
    ~BHandler() override;

    virtual void MessageReceived(BMessage* message); // ignores it
    virtual BLooper* Looper() const;                 // null before it has one and after that is gone

    // Filters see each message before its dispatch, in the order of their addition. When a filter changes the target,
    // this handler's filters stop and the new target's filters follow, unless they have seen the message. Takes
    // ownership of 'filter'.
    void AddFilter(BMessageFilter* filter);
    const std::vector<std::unique_ptr<BMessageFilter>>& Filters() const { return filters; }

    void NoticeReceived(uint32 what, const BMessage* message) override; // calls MessageReceived with 'what'

    vetch::HandlerToken Token() const { return token; }
    void SetLooper(BLooper* looper); // called by the framework when a view joins or leaves a window

private:
    const vetch::HandlerToken token;
    std::vector<std::unique_ptr<BMessageFilter>> filters;
};
