// Something a user can invoke, and the message that it then sends.
#pragma once

#include "vetch/app/BHandler.h"
#include "vetch/app/BMessage.h"

#include <memory>

// Owns its message; borrows its target, which may die first. Touched on its window's thread, as the view it belongs to.
class BInvoker {
public:
    BInvoker();
    virtual ~BInvoker();

    status_t SetMessage(BMessage* message); // takes it over; null removes it
    const BMessage* Message() const { return message.get(); }

    // The handler that is sent to; with a null handler, the looper itself; with neither, nobody.
    status_t SetTarget(const BHandler* handler, const BLooper* looper = nullptr);

    // Posts a copy of 'message', or of its own when that is null; B_ERROR without a message or a live target.
    virtual status_t Invoke(const BMessage* message = nullptr);

protected:
    bool HasTarget() const { return target != vetch::kNoHandler; }

private:
    std::unique_ptr<BMessage> message;
    vetch::HandlerToken target = vetch::kNoHandler;
};
