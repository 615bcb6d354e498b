// Sends notices of its changes to whoever watches it.
#pragma once

#include "vetch/support/NoticeReceiver.h"
#include "vetch/support/Types.h"

#include <vector>

class BMessage;

// Notices are delivered synchronously, on the caller's thread, in the order in which the watchers came. While it is
// told, a watcher may stop watching, die, destroy other watchers or the notifier itself; one that starts watching hears
// the next notice first.
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

    struct Watch {
        vetch::NoticeReceiver* receiver; // null: has left while notices were being sent
        uint32 what;
    };

    bool Watches(const vetch::NoticeReceiver* receiver) const;
    void Forget(vetch::NoticeReceiver* receiver);
    void RemoveLeavers();

    std::vector<Watch> watches;
    int sending = 0;               // SendNotices() calls under way
    bool* diedMeanwhile = nullptr; // of the innermost of them
};
