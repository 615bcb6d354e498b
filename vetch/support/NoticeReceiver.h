// A watcher of BNotifiers.
#pragma once

#include "vetch/support/Types.h"

#include <vector>

class BMessage;
class BNotifier;

namespace vetch {

// Receives notices of the notifiers that it watches. Either side may die first: each forgets the other.
//
// A receiver and the notifiers it watches belong to one thread.
class NoticeReceiver {
public:
    NoticeReceiver() = default;
    NoticeReceiver(const NoticeReceiver&) = delete;
    NoticeReceiver& operator=(const NoticeReceiver&) = delete;

    // 'message' may be null and is valid during the call.
    virtual void NoticeReceived(uint32 what, const BMessage* message) = 0;

protected:
    virtual ~NoticeReceiver(); // stops watching everything

private:
    friend class ::BNotifier;
    std::vector<BNotifier*> watched;
};

} // namespace vetch
