// Something that a user can invoke, with the message that it then sends.
#pragma once

#include "vetch/app/BHandler.h"
#include "vetch/app/BMessage.h"

#include <memory>

// Owns its message; borrows its target, which may die first. Touched on its window's thread, as its view is.
class BInvoker {
public:
    BInvoker();
    virtual ~BInvoker();

    status_t SetMessage(BMessage* message); // takes ownership; null removes it
    const BMessage* Message() const { return message.get(); }

    // A null handler means the looper itself; with neither there is no target.
    status_t SetTarget(const BHandler* handler, const BLooper* looper = nullptr);

    // Posts a copy of 'message', or of its own message for null; B_ERROR without a message or a live target.
    virtual status_t Invoke(const BMessage* message = nullptr);

protected:
    bool HasTarget() const { return target != vetch::kNoHandler; }

private:
    std::unique_ptr<BMessage> message;
    vetch::HandlerToken target = vetch::kNoHandler;
};
