// Reads changed texts while nobody asks, so that the next request finds their symbols.
#pragma once

#include "wren/projects/Projects.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace wren {

// Any thread.
class Settler {
public:
    explicit Settler(Projects& projects); // borrowed
    ~Settler();

    void TextChanged(); // texts are settled after a pause without changes

private:
    void Run();
    void SettleAll(std::unique_lock<std::mutex>& lock);

    Projects& projects;
    std::mutex mutex; // guards the members below
    std::condition_variable changed;
    std::chrono::steady_clock::time_point last; // change
    bool isSettled = true;
    bool ends = false;
    std::thread thread;
};

} // namespace wren
