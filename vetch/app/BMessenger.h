// Sends messages to a handler that may be gone.
#pragma once

#include "vetch/app/BHandler.h"

// Copyable; any thread.
class BMessenger {
public:
    explicit BMessenger(const BHandler* target); // a looper, or a looper's handler

    status_t SendMessage(const BMessage* message) const; // B_ERROR when the target is gone

private:
    vetch::HandlerToken target;
};
