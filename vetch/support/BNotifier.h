// Sends notices of its changes to its watchers.
#pragma once

#include "vetch/support/NoticeReceiver.h"
#include "vetch/support/Types.h"

#include <vector>

class BMessage;

// Notices are delivered synchronously, on the caller's thread, in the order in which the watchers came. While it
// receives a notice, a watcher may stop watching, die, or destroy other watchers or the notifier. A watcher added then
// gets its first notice with the next call.
class BNotifier {
public:
    BNotifier() = default;
    BNotifier(const BNotifier&) = delete;
    BNotifier& operator=(const BNotifier&) = delete;
    virtual ~BNotifier(); // its watchers forget it

    virtual void SendNotices(uint32 what, const BMessage* message = nullptr);
    void StartWatchingBy(vetch::NoticeReceiver* receiver, uint32 what); // ignores a second call
    void StopWatchingBy(vetch::NoticeReceiver* receiver, uint32 what);

private:
    friend class vetch::NoticeReceiver;

    struct Watch {
        vetch::NoticeReceiver* receiver; // null: left while notices were being sent
        uint32 what;
    };

    bool Watches(const vetch::NoticeReceiver* receiver) const;
    void Forget(vetch::NoticeReceiver* receiver);
    void RemoveLeavers();

    std::vector<Watch> watches;
    int sending = 0;               // SendNotices() calls under way
    bool* diedMeanwhile = nullptr; // of the innermost call
};
