#include "wren/desktop/OpenRequests.h"

#include "wren/core/Host.h"
#include "wren/desktop/Editor.h"
#include "wren/desktop/MainWindow.h"

#include <QApplication>

#include <chrono>

namespace wren {

namespace {

constexpr std::chrono::milliseconds kLookAgain(50); // whether the question is answered

bool IsAsking()
{
    return QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
}

} // namespace

OpenRequests::OpenRequests(Editor& editor, Claim claim)
    : editor(editor), lock(std::move(claim.lock)), door(std::move(claim.listener))
{
    again.setSingleShot(true);
    again.setInterval(kLookAgain);
    connect(&again, &QTimer::timeout, this, &OpenRequests::TakePending);
    connect(&door, &InstanceDoor::Asked, this, [this](long visitor, const OpenRequest& request) {
        pending.emplace_back(visitor, request);
        TakePending();
    });
    connect(&door, &InstanceDoor::Gone, this, [this](long visitor) { awaited.erase(visitor); });
    connect(&editor.Actions().documents, &DocumentActions::Closing, this, &OpenRequests::Closed);
}

OpenRequests::~OpenRequests()
{
    for (const auto& [visitor, documents] : awaited)
        door.Dismiss(visitor, kClosed);
}

void OpenRequests::TakePending()
{
    while (!pending.empty() && !IsAsking()) {
        const auto [visitor, request] = std::move(pending.front());
        pending.pop_front();
        Do(visitor, request);
    }
    if (!pending.empty())
        again.start();
}

void OpenRequests::Do(long visitor, const OpenRequest& request)
{
    ComeForward(request.activation);
    const std::set<long> opened = Open(request.places);
    if (opened.empty() && !request.places.empty())
        door.Dismiss(visitor, kFailed);
    else if (opened.empty() || !request.waits)
        door.Dismiss(visitor, kClosed);
    else
        awaited[visitor] = opened;
}

std::set<long> OpenRequests::Open(const std::vector<Place>& places)
{
    std::set<long> opened;
    for (const Place& place : places) {
        editor.Actions().documents.OpenOrNew(place);
        if (const Document* document = editor.TheHost().AllDocuments().FindByPath(AbsolutePath(place.file)))
            opened.insert(document->Id());
    }
    return opened;
}

void OpenRequests::ComeForward(const std::string& activation)
{
    if (!activation.empty()) // where Qt looks for it
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(activation));
    MainWindow& window = editor.Window();
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}

void OpenRequests::Closed(long document)
{
    for (auto each = awaited.begin(); each != awaited.end();) {
        auto& [visitor, documents] = *each;
        if (documents.erase(document) == 0 || !documents.empty()) {
            ++each;
            continue;
        }
        door.Dismiss(visitor, kClosed);
        each = awaited.erase(each);
    }
}

} // namespace wren
