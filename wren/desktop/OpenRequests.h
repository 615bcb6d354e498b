// Opens what later starts of the editor bring, and tells them when it is closed.
#pragma once

#include "wren/desktop/instance/InstanceDoor.h"
#include "wren/instance/Instance.h"

#include <QTimer>

#include <deque>
#include <map>
#include <set>
#include <utility>

namespace wren {

class Editor;

// While a question or a menu is open, requests wait: whatever asks would not expect that texts come or go. Those who
// wait for a text hear of its closing, also when the editor ends in order. GUI thread.
class OpenRequests : public QObject {
    Q_OBJECT
public:
    OpenRequests(Editor& editor, Claim claim); // borrows the editor
    ~OpenRequests() override;

    bool IsIdle() const { return pending.empty(); }
    const InstanceDoor& Door() const { return door; }

private:
    void TakePending();
    void Do(long visitor, const OpenRequest& request);
    std::set<long> Open(const std::vector<Place>& places);
    void ComeForward(const std::string& activation);
    void Closed(long document);

    Editor& editor;
    const base::Descriptor lock;
    InstanceDoor door;
    QTimer again;
    std::deque<std::pair<long, OpenRequest>> pending;
    std::map<long, std::set<long>> awaited; // documents, by the visitor that waits until all are closed
};

} // namespace wren
