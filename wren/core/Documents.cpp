#include "wren/core/Documents.h"

#include "base/Descriptor.h"
#include "base/PlainFile.h"
#include "vetch/app/Loop.h"
#include "vetch/interface/BWindow.h"
#include "wren/core/Face.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

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
        return nullptr; // the path of all documents without a file, none of which matches
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

namespace {

// How much longer than its size at opening a file may be. Logs grow, and some system files report size 0; others of
// those never end.
constexpr size_t kMostGrowth = 64 * 1024 * 1024;
constexpr size_t kMostBytes = std::numeric_limits<int32_t>::max(); // views count in ints

// Returns 0, or the errno of the failure.
int ReadAll(int file, std::string& text)
{
    struct stat status;
    if (::fstat(file, &status) != 0)
        return errno;
    if (static_cast<size_t>(status.st_size) > kMostBytes)
        return EFBIG;
    const size_t most = std::min(kMostBytes, static_cast<size_t>(status.st_size) + kMostGrowth);
    char buffer[64 * 1024];
    while (const ssize_t count = ::read(file, buffer, sizeof buffer)) {
        if (count < 0 && errno != EINTR)
            return errno;
        text.append(buffer, static_cast<size_t>(std::max<ssize_t>(count, 0)));
        if (text.size() > most)
            return EFBIG;
    }
    return 0;
}

int ReadPlainFile(const std::string& path, std::string& text)
{
    const base::Descriptor file(base::OpenPlainFile(path.c_str()));
    if (!file.IsOpen())
        return errno;
    try {
        return ReadAll(file.Number(), text);
    } catch (const std::bad_alloc&) {
        return ENOMEM;
    }
}

std::string Said(int reason)
{
    return reason == ENXIO ? "a pipe, a device or a socket holds no text" : std::strerror(reason);
}

} // namespace

// Tags name files that nobody has checked: a pipe must not block the editor, and an endless file must not be read
// forever.
std::optional<std::string> ReadWholeFile(const std::string& path, std::string* error)
{
    std::string text;
    const int reason = ReadPlainFile(path, text);
    if (reason == 0)
        return text;
    *error = path + ": " + Said(reason);
    return std::nullopt;
}

} // namespace wren
