#include "wren/desktop/state/QuietTimer.h"

#include <algorithm>

namespace wren {

QuietTimer::QuietTimer(std::chrono::milliseconds pause, std::chrono::milliseconds longest, QObject* parent)
    : QObject(parent), pause(pause), longest(longest)
{
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &QuietTimer::Quiet);
}

void QuietTimer::Happened(std::chrono::milliseconds more)
{
    if (!timer.isActive())
        latest = QDeadlineTimer(longest + more);
    timer.start(std::min(pause + more, std::chrono::milliseconds(latest.remainingTime())));
}

} // namespace wren
