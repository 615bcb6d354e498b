// Sees a handler's messages before their dispatch, and may drop or redirect them.
#pragma once

class BHandler;
class BMessage;

enum filter_result { B_SKIP_MESSAGE, B_DISPATCH_MESSAGE };
enum message_delivery { B_ANY_DELIVERY };
enum message_source { B_ANY_SOURCE };

// Runs on the window's thread, with its lock held. Owned by its handler.
class BMessageFilter {
public:
    BMessageFilter(message_delivery, message_source) {}
    virtual ~BMessageFilter() = default;

    // B_SKIP_MESSAGE drops the message; '*target' may be set to another handler of the same looper.
    virtual filter_result Filter(BMessage*, BHandler** /*target*/) { return B_DISPATCH_MESSAGE; }
};
