#include "wren/core/BackgroundWork.h"

#include "vetch/app/BLooper.h"
#include "vetch/app/Loop.h"
#include "vetch/support/FThread.h"
#include "vetch/support/ThreadStart.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <thread>
#include <unistd.h>

namespace wren {

namespace {

constexpr std::chrono::milliseconds kLookAgain(2);

// While it is read a thread may end, which can hide the one behind it; the one that ends is listed then. So there may
// be another thread in the place of one that is there, but never too few.
std::set<std::string> Threads()
{
    std::set<std::string> threads;
    std::error_code unknown;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task", unknown))
        threads.insert(thread.path().filename());
    return threads;
}

long CountWindowThreads()
{
    long count = 0;
    for (const vetch::LooperToken token : vetch::Loopers())
        if (const BLooper* looper = vetch::FindLooper(token))
            count += looper->HasRun() && looper->ServedBy() == vetch::Service::OwnThread;
    return count;
}

} // namespace

// A sanitizer's run-time library starts a thread of its own along with the first that a program starts, so one is
// started here, if there can be any; it may still be listed after it was joined, and is no part of what was there.
BackgroundWork::BackgroundWork()
{
    long first = 0;
    std::thread probe = vetch::StartThread(nullptr, [&first] { first = ::gettid(); });
    if (probe.joinable())
        probe.join();
    threadsAtStart = Threads();
    threadsAtStart.erase(std::to_string(first));
}

bool BackgroundWork::WaitUntilIdle(std::chrono::milliseconds limit) const
{
    const auto end = std::chrono::steady_clock::now() + limit;
    vetch::Settle();
    while (!IsIdle() || !StaysIdle()) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        // Nobody can be asked to tell when a detached thread ends.
        std::this_thread::sleep_for(kLookAgain);
        vetch::Settle();
    }
    return true;
}

// What has just ended may have posted a last message, and that may start something new.
bool BackgroundWork::StaysIdle() const
{
    vetch::Settle();
    return IsIdle();
}

bool BackgroundWork::IsLeftOut(const std::string& thread) const
{
    std::ifstream file("/proc/self/task/" + thread + "/comm");
    std::string name;
    return !leftOut.empty() && std::getline(file, name) && leftOut.contains(name);
}

// A generating thread is there from before CreateTags returns until it has left the plug-in's code for good, and what
// it runs are processes of their own: as long as the system lists it, and no longer, its work is under way.
bool BackgroundWork::IsIdle() const
{
    if (!vetch::ThreadsAreIdle())
        return false;
    const std::set<std::string> threads = Threads();
    if (threads.empty())
        return false; // they could not be listed just now
    const long started = std::count_if(threads.begin(), threads.end(), [this](const std::string& thread) {
        return !threadsAtStart.contains(thread) && !IsLeftOut(thread);
    });
    return started <= CountWindowThreads();
}

} // namespace wren
