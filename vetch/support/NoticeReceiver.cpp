#include "vetch/support/NoticeReceiver.h"

#include "vetch/support/BNotifier.h"

namespace vetch {

NoticeReceiver::~NoticeReceiver()
{
    for (BNotifier* notifier : watched)
        notifier->Forget(this);
}

} // namespace vetch
