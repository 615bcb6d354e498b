// Waits for a pause in events, but not longer than a limit.
#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <chrono>

namespace wren {

// Nothing wakes up while nothing happens. GUI thread.
class QuietTimer : public QObject {
    Q_OBJECT
public:
    QuietTimer(std::chrono::milliseconds pause, std::chrono::milliseconds longest, QObject* parent = nullptr);

    // 'more' is added to both times, for work that takes longer.
    void Happened(std::chrono::milliseconds more = {});
    bool IsWaiting() const { return timer.isActive(); }

signals:
    void Quiet(); // once: 'pause' after the last Happened(), but no later than 'longest' after the first

private:
    const std::chrono::milliseconds pause;
    const std::chrono::milliseconds longest;
    QTimer timer;
    QDeadlineTimer latest;
};

} // namespace wren
