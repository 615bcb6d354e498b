#include "wren/desktop/state/QuietTimer.h"

#include <algorithm>

namespace wren {

QuietTimer::QuietTimer(std::chrono::milliseconds pause, std::chrono::milliseconds longest, QObject* parent)
    : QObject(parent), pause(pause), longest(longest)
{
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &QuietTimer::Quiet);
}

void QuietTimer::Happened()
{
    if (!timer.isActive())
        latest = QDeadlineTimer(longest);
    timer.start(std::min(pause, std::chrono::milliseconds(latest.remainingTime())));
}

} // namespace wren
