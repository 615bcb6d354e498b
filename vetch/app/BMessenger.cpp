#include "vetch/app/BMessenger.h"

#include "vetch/app/BMessage.h"
#include "vetch/app/Loop.h"

BMessenger::BMessenger(const BHandler* target) : target(target ? target->Token() : vetch::kNoHandler) {}

status_t BMessenger::SendMessage(const BMessage* message) const
{
    return message ? vetch::PostToHandler(target, *message) : B_ERROR;
}
