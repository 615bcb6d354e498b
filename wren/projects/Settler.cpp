#include "wren/projects/Settler.h"

namespace wren {

namespace {

constexpr std::chrono::milliseconds kPause(300); // typing goes on within less

}

Settler::Settler(Projects& projects) : projects(projects), thread([this] { Run(); }) {}

Settler::~Settler()
{
    {
        const std::lock_guard lock(mutex);
        ends = true;
        changed.notify_all();
    }
    thread.join();
}

void Settler::TextChanged()
{
    const std::lock_guard lock(mutex);
    last = std::chrono::steady_clock::now();
    if (isSettled)
        changed.notify_all();
    isSettled = false;
}

void Settler::Run()
{
    std::unique_lock lock(mutex);
    while (!ends) {
        if (isSettled) {
            changed.wait(lock);
        } else if (std::chrono::steady_clock::now() < last + kPause) {
            changed.wait_until(lock, last + kPause);
        } else {
            isSettled = true;
            SettleAll(lock);
        }
    }
}

void Settler::SettleAll(std::unique_lock<std::mutex>& lock)
{
    for (const auto& project : projects.All())
        for (bool wasOne = true; wasOne && !ends;) {
            lock.unlock();
            wasOne = project->SettleOne();
            lock.lock();
        }
}

} // namespace wren
