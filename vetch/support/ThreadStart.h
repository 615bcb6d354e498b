// Starting threads: all of the framework's, the plug-in's and the editor's begin here.
#pragma once

#include <functional>
#include <thread>

namespace vetch {

// Runs 'body' on a new thread, which the caller joins or detaches. When the system has no thread to give, the result is
// not joinable, and nothing of 'body' has run.
//
// 'loss' is a clause that says what the user does without then: "a window is not shown". It goes to Complain(), once
// until a thread with the same loss starts again; null for what nobody misses. An exception that escapes 'body' ends
// the thread and is reported too. Throws nothing. Any thread, with any locks held.
std::thread StartThread(const char* loss, std::function<void()> body);

// What takes the place of a thread's number where none was started; not B_ERROR.
inline constexpr int kNotStarted = -2;

// Whether anything was ever lost in this process for lack of a thread: an answer may be empty for that.
bool ThreadsWereRefused();

// Calls 'function'; an exception is reported with Complain() and goes no further.
void CallGuarded(const std::function<void()>& function);

// Takes the system's place, for tests: it starts the thread, or throws std::system_error. Null for the system. Set it
// while no other thread starts any.
using ThreadStarter = std::function<std::thread(const char* loss, std::function<void()> body)>;
void SetThreadStarter(ThreadStarter starter);

} // namespace vetch
