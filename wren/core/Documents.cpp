#include "wren/core/Documents.h"

#include "vetch/app/Loop.h"
#include "vetch/interface/BWindow.h"
#include "wren/core/Face.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <sys/stat.h>

namespace wren {

namespace {

constexpr long kDocumentWindowLook = 1;

} // namespace

Documents::Documents(Face& face) : face(face) {}

Documents::~Documents()
{
    CloseAll();
}

const Documents::OpenDocument* Documents::FindOpen(long id) const
{
    const auto found =
        std::find_if(open.begin(), open.end(), [id](const OpenDocument& each) { return each.document->Id() == id; });
    return found == open.end() ? nullptr : &*found;
}

Document* Documents::Find(long id) const
{
    const OpenDocument* found = FindOpen(id);
    return found == nullptr ? nullptr : found->document.get();
}

Document* Documents::FindByPath(const std::string& path) const
{
    if (path.empty())
        return nullptr; // which is what all documents without a file have, and none of them is meant
    const EntryRef wanted(path.c_str());
    for (const OpenDocument& each : open)
        if (each.document->Ref() == wanted)
            return each.document.get();
    return nullptr;
}

Document* Documents::FindWorksheet() const
{
    for (const OpenDocument& each : open)
        if (each.document->IsWorksheet())
            return each.document.get();
    return nullptr;
}

BWindow* Documents::WindowOf(long id) const
{
    const OpenDocument* found = FindOpen(id);
    return found == nullptr ? nullptr : found->window;
}

std::vector<Document*> Documents::All() const
{
    std::vector<Document*> all;
    for (const OpenDocument& each : open)
        all.push_back(each.document.get());
    return all;
}

Document& Documents::Open(const std::string& path, std::string_view text, bool worksheet)
{
    assert(lastId < std::numeric_limits<int32>::max()); // identifiers travel as int32
    const long id = ++lastId;
    auto document = std::make_unique<Document>(id, path, face.MakeText(id), worksheet);
    document->SetText(text);
    const char* title = document->Ref().name == nullptr ? "untitled" : document->Ref().name;
    auto* window = new BWindow(face.DocumentWindowFrame(), title, kDocumentWindowLook, B_NORMAL_WINDOW_FEEL, 0,
                               vetch::Service::Application, vetch::ShownBy::Host);
    open.push_back({std::move(document), window});
    return *open.back().document;
}

void Documents::SetCurrent(const Document* document)
{
    ActivateCurrent(false);
    current = document == nullptr ? 0 : document->Id();
    ActivateCurrent(userPresent);
}

void Documents::SetUserPresent(bool present)
{
    userPresent = present;
    ActivateCurrent(present);
}

void Documents::FollowFrame()
{
    const BRect frame = face.DocumentWindowFrame();
    for (const OpenDocument& each : open) {
        each.window->MoveTo(frame.left, frame.top);
        each.window->ResizeTo(frame.Width(), frame.Height());
    }
}

void Documents::Close(long id)
{
    const auto found =
        std::find_if(open.begin(), open.end(), [id](const OpenDocument& each) { return each.document->Id() == id; });
    if (found == open.end())
        return;
    closed.push_back(std::move(*found));
    open.erase(found);
    if (current == id)
        current = 0;
    DestroyClosed();
}

void Documents::CloseAll()
{
    while (!open.empty())
        Close(open.back().document->Id());
}

void Documents::DestroyClosed()
{
    if (vetch::PluginCall::Depth() > 0)
        return;
    for (const OpenDocument& each : closed)
        each.window->Quit();
    closed.clear();
}

void Documents::ActivateCurrent(bool active)
{
    if (BWindow* window = WindowOf(current))
        window->Activate(active);
}

std::optional<std::string> ReadWholeFile(const std::string& path, std::string* error)
{
    struct stat status;
    if (::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
        *error = path + ": " + std::strerror(EISDIR);
        return std::nullopt;
    }
    const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (file == nullptr) {
        *error = path + ": " + std::strerror(errno);
        return std::nullopt;
    }
    std::string text;
    char buffer[64 * 1024];
    while (const size_t count = std::fread(buffer, 1, sizeof buffer, file.get()))
        text.append(buffer, count);
    if (std::ferror(file.get())) {
        *error = path + ": " + std::strerror(errno);
        return std::nullopt;
    }
    return text;
}

} // namespace wren
