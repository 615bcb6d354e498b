// The end of the program when its orderly end takes too long.
#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

namespace wren::lsp {

// An editor that quits waits for its server. While this exists, the program ends at once, with this status, when a few
// seconds have passed: files of an index are then those of its last complete state.
class LastResort {
public:
    explicit LastResort(int status);
    ~LastResort();

private:
    std::mutex mutex; // guards the members below
    std::condition_variable changed;
    bool isDone = false;
    std::thread thread;
};

} // namespace wren::lsp
