#include "wren/lsp/session/Workers.h"

#include <chrono>
#include <utility>

namespace wren::lsp {

Workers::Workers(size_t count)
{
    for (size_t number = 0; number < count; ++number)
        threads.emplace_back([this] { Run(); });
}

Workers::~Workers()
{
    WaitUntilIdle();
    {
        const std::lock_guard lock(mutex);
        ends = true;
        changed.notify_all();
    }
    for (std::thread& thread : threads)
        thread.join();
}

void Workers::Add(std::function<void()> job)
{
    const std::lock_guard lock(mutex);
    jobs.push_back(std::move(job));
    changed.notify_all();
}

size_t Workers::Waiting()
{
    const std::lock_guard lock(mutex);
    return jobs.size();
}

void Workers::WaitForOne()
{
    constexpr std::chrono::milliseconds kMoment(50);
    std::unique_lock lock(mutex);
    changed.wait_for(lock, kMoment);
}

void Workers::WaitUntilIdle()
{
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return jobs.empty() && running == 0; });
}

void Workers::Run()
{
    std::unique_lock lock(mutex);
    for (;;) {
        changed.wait(lock, [this] { return ends || !jobs.empty(); });
        if (jobs.empty())
            return;
        std::function<void()> job = std::move(jobs.front());
        jobs.pop_front();
        ++running;
        lock.unlock();
        job();
        job = nullptr; // what it holds may take time to destroy
        lock.lock();
        --running;
        changed.notify_all();
    }
}

} // namespace wren::lsp
