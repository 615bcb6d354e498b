#include "wren/lsp/session/Client.h"

#include "base/Paths.h"

#include <algorithm>
#include <climits>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace wren::lsp {

namespace {

// Nothing waits for a reader of the log: a line for which a pipe has no room is dropped.
void WriteLogLine(const std::string& text)
{
    static std::mutex one; // between the look and the write
    const std::lock_guard lock(one);
    pollfd room = {STDERR_FILENO, POLLOUT, 0}; // for PIPE_BUF bytes at least
    if (::poll(&room, 1, 0) <= 0 || (room.revents & POLLOUT) == 0)
        return;
    std::string line = "wren lsp: " + base::ShownLines(text);
    line.resize(std::min<size_t>(line.size(), PIPE_BUF - 1));
    line += '\n';
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, line.data(), line.size());
}

} // namespace

void Client::Notify(const std::string& method, const Json& params)
{
    outbox.Send({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
}

void Client::Show(MessageType type, const std::string& text)
{
    Notify("window/showMessage", {{"type", static_cast<int>(type)}, {"message", text}});
}

void Client::Log(MessageType type, const std::string& text)
{
    WriteLogLine(text);
    outbox.SendIfRoom({{"jsonrpc", "2.0"},
                       {"method", "window/logMessage"},
                       {"params", {{"type", static_cast<int>(type)}, {"message", text}}}});
}

void Client::Ask(const std::string& method, const Json& params, OnAnswer onAnswer)
{
    std::int64_t id;
    {
        const std::lock_guard lock(mutex);
        id = ++lastId;
        asked.emplace(id, std::move(onAnswer));
    }
    outbox.Send({{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}});
}

void Client::TakeAnswer(const Json& message)
{
    OnAnswer onAnswer;
    {
        const std::lock_guard lock(mutex);
        const auto id = message.find("id");
        if (id == message.end() || !id->is_number_integer())
            return;
        const auto found = asked.find(id->get<std::int64_t>());
        if (found == asked.end())
            return;
        onAnswer = std::move(found->second);
        asked.erase(found);
    }
    const auto result = message.find("result");
    if (onAnswer)
        onAnswer(result == message.end() ? nullptr : &*result);
}

} // namespace wren::lsp
