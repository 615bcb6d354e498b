#include "vetch/app/BInvoker.h"

#include "vetch/app/BLooper.h"
#include "vetch/app/Loop.h"

BInvoker::BInvoker() = default;
BInvoker::~BInvoker() = default;

status_t BInvoker::SetMessage(BMessage* newMessage)
{
    if (newMessage != message.get())
        message.reset(newMessage);
    return B_OK;
}

status_t BInvoker::SetTarget(const BHandler* handler, const BLooper* looper)
{
    const BHandler* const receiver = handler ? handler : looper;
    target = receiver ? receiver->Token() : vetch::kNoHandler;
    return B_OK;
}

status_t BInvoker::Invoke(const BMessage* other)
{
    const BMessage* const sent = other ? other : message.get();
    return sent ? vetch::PostToHandler(target, *sent) : B_ERROR;
}
