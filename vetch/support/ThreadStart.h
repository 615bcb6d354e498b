// Starts threads: all threads of the framework, the plug-in and the editor begin here.
#pragma once

#include <functional>
#include <thread>

namespace vetch {

// Runs 'body' on a new thread, which the caller joins or detaches. If the system cannot start one, the result is not
// joinable and 'body' has not run.
//
// 'loss' is a clause that names the consequence for the user: "a window is not shown". Complain() reports it once,
// until a thread with the same loss starts again; null reports nothing. An exception that escapes 'body' ends the
// thread and is reported too. Throws nothing. Any thread, with any locks held.
std::thread StartThread(const char* loss, std::function<void()> body);

// Stands for a thread's number where none was started; differs from B_ERROR.
inline constexpr int kNotStarted = -2;

// Whether this process ever lost work for lack of a thread: a reason for an empty answer.
bool ThreadsWereRefused();

// Calls 'function'; an exception is reported with Complain() and not passed on.
void CallGuarded(const std::function<void()>& function);

// For tests: replaces the system. It starts the thread or throws std::system_error. Null restores the system. Set it
// while no other thread starts threads.
using ThreadStarter = std::function<std::thread(const char* loss, std::function<void()> body)>;
void SetThreadStarter(ThreadStarter starter);

} // namespace vetch
