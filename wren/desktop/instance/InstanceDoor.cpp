#include "wren/desktop/instance/InstanceDoor.h"

#include "wren/instance/Instance.h"

#include <QSocketNotifier>
#include <QTimer>

#include <array>
#include <cerrno>
#include <string>
#include <sys/socket.h>
#include <utility>

namespace wren {

namespace {

constexpr std::chrono::seconds kUntilDescriptors(1); // while the process has no more of them

void Tell(int socket, std::string_view line)
{
    [[maybe_unused]] const ssize_t ignored = // whoever has gone needs no answer
        ::send(socket, line.data(), line.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}

} // namespace

struct InstanceDoor::Visitor {
    Visitor(int socket, InstanceDoor* door) : socket(socket), ready(socket, QSocketNotifier::Read), deadline(door) {}

    base::Descriptor socket;
    QSocketNotifier ready;
    QTimer deadline;
    std::string form;
    bool wasHeard = false;
};

InstanceDoor::InstanceDoor(base::Descriptor opened, std::chrono::milliseconds patience)
    : listener(std::move(opened)), patience(patience),
      arrivals(new QSocketNotifier(listener.Number(), QSocketNotifier::Read, this))
{
    connect(arrivals, &QSocketNotifier::activated, this, &InstanceDoor::Accept);
}

InstanceDoor::~InstanceDoor() = default;

void InstanceDoor::Accept()
{
    for (;;) {
        const int socket = ::accept4(listener.Number(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (socket < 0) {
            if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED) { // it would be reported without a pause
                arrivals->setEnabled(false);
                QTimer::singleShot(kUntilDescriptors, this, [this] { arrivals->setEnabled(true); });
            }
            return;
        }
        auto visitor = std::make_unique<Visitor>(socket, this);
        if (!IsFromThisUser(socket) || visitors.size() >= kMostVisitors)
            continue;
        const long number = ++last;
        // Queued: reading may forget the visitor, and with it what called.
        connect(
            &visitor->ready, &QSocketNotifier::activated, this, [this, number] { Read(number); }, Qt::QueuedConnection);
        connect(
            &visitor->deadline, &QTimer::timeout, this, [this, number] { Dismiss(number, kFailed); },
            Qt::QueuedConnection);
        visitor->deadline.setSingleShot(true);
        visitor->deadline.start(patience);
        visitors.emplace(number, std::move(visitor));
    }
}

void InstanceDoor::Read(long number)
{
    const auto found = visitors.find(number);
    if (found == visitors.end())
        return;
    Visitor& visitor = *found->second;
    std::array<char, 1 << 16> part;
    const ssize_t size = ::recv(visitor.socket.Number(), part.data(), part.size(), 0);
    if (size < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (size <= 0 || visitor.wasHeard) // nothing belongs behind a request
        return Forget(number);
    visitor.form.append(part.data(), static_cast<size_t>(size));
    if (visitor.form.size() > OpenRequest::kMostBytes)
        Dismiss(number, kFailed);
    else if (visitor.form.ends_with(kEndOfRequest))
        Heard(number);
}

void InstanceDoor::Heard(long number)
{
    Visitor& visitor = *visitors.at(number);
    const base::Result<OpenRequest> request = RequestFrom(std::exchange(visitor.form, {}));
    if (!request)
        return Dismiss(number, kFailed);
    visitor.wasHeard = true;
    visitor.deadline.stop();
    Tell(visitor.socket.Number(), kTaken);
    emit Asked(number, *request);
}

void InstanceDoor::Forget(long number)
{
    visitors.erase(number);
    emit Gone(number);
}

void InstanceDoor::Dismiss(long number, std::string_view answer)
{
    const auto found = visitors.find(number);
    if (found == visitors.end())
        return;
    Tell(found->second->socket.Number(), answer);
    visitors.erase(found);
}

} // namespace wren
