// Tells when everything that the plug-in does in the background has ended.
#pragma once

#include <chrono>
#include <set>
#include <string>

namespace wren {

// Threads that load caches are the framework's and say when they are done. Threads that generate tags are detached ones
// of the plug-in's own that nobody announces; they are what is left of the process's threads once those that were there
// at the beginning and those of the windows are taken off.
//
// Make it before the first event is sent, in a process that starts no other threads afterwards. Document thread.
class BackgroundWork {
public:
    BackgroundWork();

    // Threads of that name are a face's own and no work.
    void LeaveOut(const std::string& threadName) { leftOut.insert(threadName); }

    // Delivers messages meanwhile. False when something is still at work at the limit.
    bool WaitUntilIdle(std::chrono::milliseconds limit) const;

private:
    bool IsIdle() const;
    bool StaysIdle() const;

    bool IsLeftOut(const std::string& thread) const;

    std::set<std::string> threadsAtStart; // their numbers
    std::set<std::string> leftOut;        // names
};

} // namespace wren
