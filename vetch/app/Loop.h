// The document thread's side of the message loops: dispatch, destruction of ended loopers, waiting for quiet, shutdown.
#pragma once

#include "vetch/app/ThreadNumber.h"
#include "vetch/app/Tokens.h"
#include "vetch/app/WakeUp.h"

namespace vetch {

// Marks an active plug-in call. Meanwhile RunPending() and Settle() do nothing: messages for documents and the
// destruction of windows wait. Calls nest. Hold no lock at the end of one. Document thread.
class PluginCall {
public:
    PluginCall();
    ~PluginCall();
    PluginCall(const PluginCall&) = delete;
    PluginCall& operator=(const PluginCall&) = delete;

    static int Depth();
};

// Dispatches all messages of the application and of the windows that it serves, and destroys ended loopers. Does not
// wait for a running thread; waits for another thread only while that holds an ended looper's lock. Document thread, no
// lock held.
void RunPending();

// RunPending(), then waits until every queue is empty and no looper dispatches. Does not wait for FThreads. Document
// thread, no lock held.
void Settle();

// With turns on, loopers dispatch on their own threads, but one message at a time, in the order of posting, and only
// during Settle(). The same input gives the same order of events. Set it before the first looper runs.
void SetTurns(bool on);

// Quits every looper whose class belongs to the shared library at 'address', except the application, and waits for its
// destruction. A looper of another thread that has not run quits at its Run(), or when its maker ends. This waits for
// it only if its maker is the thread of a looper that quits here. Document thread, no lock held.
void QuitLoopersOf(const void* address);

} // namespace vetch
