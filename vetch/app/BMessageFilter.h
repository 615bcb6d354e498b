// Sees a handler's messages before they are dispatched, and may stop them or send them elsewhere.
#pragma once

class BHandler;
class BMessage;

enum filter_result { B_SKIP_MESSAGE, B_DISPATCH_MESSAGE };
enum message_delivery { B_ANY_DELIVERY };
enum message_source { B_ANY_SOURCE };

// Runs on the window's thread, with its lock held. Owned by the handler it was added to.
class BMessageFilter {
public:
    BMessageFilter(message_delivery, message_source) {}
    virtual ~BMessageFilter() = default;

    // B_SKIP_MESSAGE drops the message; '*target' may be changed to another handler of the same looper.
    virtual filter_result Filter(BMessage*, BHandler** /*target*/) { return B_DISPATCH_MESSAGE; }
};
