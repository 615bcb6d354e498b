// The threads that answer requests.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace wren::lsp {

// Any thread, apart from its own.
class Workers {
public:
    explicit Workers(size_t count);
    ~Workers(); // waits for all jobs

    void Add(std::function<void()> job); // does not wait
    size_t Waiting();                    // jobs that have not begun
    void WaitForOne();                   // until a job has ended, or a moment has passed
    void WaitUntilIdle();

private:
    void Run();

    std::mutex mutex; // guards the members below
    std::condition_variable changed;
    std::deque<std::function<void()>> jobs;
    size_t running = 0;
    bool ends = false;
    std::vector<std::thread> threads;
};

} // namespace wren::lsp
