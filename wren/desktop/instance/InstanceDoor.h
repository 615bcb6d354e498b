// Where later starts of the editor bring what they are asked to open.
#pragma once

#include "base/Descriptor.h"
#include "wren/instance/OpenRequest.h"

#include <QObject>

#include <chrono>
#include <map>
#include <memory>
#include <string_view>

class QSocketNotifier;

namespace wren {

// Accepts connections of this user, reads one request of each, and keeps the connection until its visitor is answered
// or goes. A request that is too long or not complete in time is refused. GUI thread.
class InstanceDoor : public QObject {
    Q_OBJECT
public:
    // 'listener' does not block. 'patience' is what a visitor has for its whole request.
    explicit InstanceDoor(base::Descriptor listener, std::chrono::milliseconds patience = std::chrono::seconds(5));
    ~InstanceDoor() override;

    void Dismiss(long visitor, std::string_view answer); // the last word to it; nothing when it has gone
    size_t Visitors() const { return visitors.size(); }

    static constexpr size_t kMostVisitors = 256; // at a time

signals:
    void Asked(long visitor, const OpenRequest& request); // the visitor knows that it is understood
    void Gone(long visitor);                              // by itself, before it was dismissed

private:
    struct Visitor;

    void Accept();
    void Read(long visitor);
    void Heard(long visitor);
    void Forget(long visitor);

    base::Descriptor listener;
    const std::chrono::milliseconds patience;
    QSocketNotifier* arrivals;
    long last = 0;
    std::map<long, std::unique_ptr<Visitor>> visitors;
};

} // namespace wren
