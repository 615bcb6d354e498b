#include "wren/lsp/protocol/Outbox.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace wren::lsp {

namespace {

constexpr size_t kMostUnread = size_t(32) << 20; // bytes of answers; then no more are made

}

Outbox::Outbox(int descriptor) : descriptor(descriptor), wake{-1, -1}
{
    if (::pipe2(wake, O_CLOEXEC) != 0)
        wake[0] = wake[1] = -1; // poll() ignores it
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    writer = std::thread([this] { Run(); });
}

Outbox::~Outbox()
{
    {
        const std::lock_guard lock(mutex);
        ends = true;
        changed.notify_all();
    }
    ::close(wake[1]);
    writer.join();
    ::close(wake[0]);
}

void Outbox::Send(const Json& message)
{
    const std::string body = TextOf(message);
    std::string framed = "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
    const std::lock_guard lock(mutex);
    if (!broken) {
        waitingBytes += framed.size();
        waiting.push_back(std::move(framed));
    }
    changed.notify_all();
}

bool Outbox::HasRoom(size_t most)
{
    const std::lock_guard lock(mutex);
    return broken || waitingBytes < most;
}

void Outbox::SendIfRoom(const Json& message)
{
    constexpr size_t kMost = size_t(1) << 20;
    if (HasRoom(kMost))
        Send(message);
}

bool Outbox::WaitForRoom(int input, const base::CancelToken& stop)
{
    constexpr int kPause = 20; // ms
    while (!HasRoom(kMostUnread)) {
        pollfd wait[2] = {{input, 0, 0}, {stop.Descriptor(), POLLIN, 0}};
        if (stop.IsCancelled() || (::poll(wait, 2, kPause) > 0 && (wait[0].revents & (POLLHUP | POLLERR)) != 0))
            return false;
    }
    return true;
}

void Outbox::WaitForRoom(const base::CancelToken& stop)
{
    constexpr std::chrono::milliseconds kPause(250); // until a cancelled request is noticed
    std::unique_lock lock(mutex);
    while (!broken && waitingBytes >= kMostUnread && !stop.IsCancelled())
        changed.wait_for(lock, kPause);
}

bool Outbox::Finish(std::chrono::milliseconds longest)
{
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, longest, [this] { return broken || (waiting.empty() && !writing); }) && !broken;
}

void Outbox::Run()
{
    std::unique_lock lock(mutex);
    for (;;) {
        changed.wait(lock, [this] { return ends || !waiting.empty(); });
        if (ends)
            return;
        const std::string text = std::move(waiting.front());
        waiting.pop_front();
        waitingBytes -= text.size();
        writing = true;
        lock.unlock();
        const bool written = Write(text);
        lock.lock();
        writing = false;
        if (!written) {
            broken = true;
            waiting.clear();
            waitingBytes = 0;
        }
        changed.notify_all();
    }
}

bool Outbox::Write(const std::string& text)
{
    for (size_t done = 0; done < text.size();) {
        const ssize_t wrote = ::write(descriptor, text.data() + done, text.size() - done);
        if (wrote >= 0) {
            done += static_cast<size_t>(wrote);
            continue;
        }
        if (errno != EAGAIN && errno != EINTR)
            return false;
        pollfd wait[2] = {{descriptor, POLLOUT, 0}, {wake[0], POLLIN, 0}};
        if (errno == EAGAIN && ::poll(wait, 2, -1) > 0 && wait[1].revents != 0)
            return false;
    }
    return true;
}

} // namespace wren::lsp
