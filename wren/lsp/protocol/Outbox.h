// Messages as they go out.
#pragma once

#include "base/CancelToken.h"
#include "wren/lsp/protocol/Json.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

namespace wren::lsp {

// Writes messages to a descriptor that it borrows, in the order of Send(), on a thread of its own: a client that reads
// slowly, or not at all, keeps nobody waiting. Any thread.
class Outbox {
public:
    explicit Outbox(int descriptor);
    ~Outbox(); // without what is not written yet: see Finish()

    void Send(const Json& message);
    // The same, for a message that nobody misses: dropped while much is waiting.
    void SendIfRoom(const Json& message);
    // Waits until the client has read enough for more answers; false when 'input' or the client is gone meanwhile, or
    // 'stop' is cancelled. A client that never reads then costs no more memory.
    bool WaitForRoom(int input, const base::CancelToken& stop);
    void WaitForRoom(const base::CancelToken& stop); // the same, whatever the input
    // Waits until all is written, at most this long; false when the client does not read it.
    bool Finish(std::chrono::milliseconds longest);

private:
    void Run();
    bool Write(const std::string& text);
    bool HasRoom(size_t most);

    const int descriptor;
    std::mutex mutex; // guards the members below
    std::condition_variable changed;
    std::deque<std::string> waiting;
    size_t waitingBytes = 0;
    bool writing = false;
    bool broken = false; // nobody reads any more
    bool ends = false;
    int wake[2]; // ends a write that a client does not take
    std::thread writer;
};

} // namespace wren::lsp
