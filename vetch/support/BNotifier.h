// Sends notices of its changes to whoever watches it.
#pragma once

#include "vetch/support/NoticeReceiver.h"
#include "vetch/support/Types.h"

#include <vector>

class BMessage;

// Notices are delivered synchronously, on the caller's thread, in the order in which the watchers came. A watcher may
// stop watching, or die, while it is told.
class BNotifier {
public:
    BNotifier() = default;
    BNotifier(const BNotifier&) = delete;
    BNotifier& operator=(const BNotifier&) = delete;
    virtual ~BNotifier(); // forgotten by its watchers

    virtual void SendNotices(uint32 what, const BMessage* message = nullptr);
    void StartWatchingBy(vetch::NoticeReceiver* receiver, uint32 what); // twice is once
    void StopWatchingBy(vetch::NoticeReceiver* receiver, uint32 what);

private:
    friend class vetch::NoticeReceiver;
    void Forget(vetch::NoticeReceiver* receiver);

    struct Watch {
        vetch::NoticeReceiver* receiver;
        uint32 what;
    };
    std::vector<Watch> watches;
};
