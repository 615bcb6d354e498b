// Hears notices, and remembers them.
#pragma once

#include "vetch/support/BNotifier.h"

#include <vector>

class NoticeLog : public vetch::NoticeReceiver {
public:
    explicit NoticeLog(BNotifier& notifier, uint32 what) { notifier.StartWatchingBy(this, what); }

    void NoticeReceived(uint32 what, const BMessage* message) override
    {
        heard.push_back(what);
        carriedMessages += message != nullptr;
    }

    std::vector<uint32> heard;
    int carriedMessages = 0;
};
