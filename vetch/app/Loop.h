// The document thread's side of the message loops: dispatching, reaping what has quit, waiting for quiet, shutting
// down.
#pragma once

#include "vetch/app/ThreadNumber.h"
#include "vetch/app/Tokens.h"
#include "vetch/app/WakeUp.h"

namespace vetch {

// While one lives, a plug-in call is active: RunPending() and Settle() do nothing, so that messages for the documents
// and the destruction of windows wait until it has returned. They nest. No lock is held when one ends. Document thread.
class PluginCall {
public:
    PluginCall();
    ~PluginCall();
    PluginCall(const PluginCall&) = delete;
    PluginCall& operator=(const PluginCall&) = delete;

    static int Depth();
};

// Dispatches the messages of the application and the windows it serves, and destroys loopers that have ended, until
// there is nothing left. Never waits for a thread that has not ended, or for longer than another one holds a dead
// looper's lock. Document thread, no lock held.
void RunPending();

// RunPending(), and waits for the loopers' queues, until every queue is empty and nobody dispatches. Does not wait for
// FThreads. Document thread, no lock held.
void Settle();

// With turns on, loopers still run on their own threads, but dispatch one message at a time, in the order in which all
// messages were posted, and only during Settle(): the same input then gives the same order of events every time. Set it
// before the first looper runs.
void SetTurns(bool on);

// Quits every looper whose class lives in the shared library that contains 'address', except the application, and waits
// until they are destroyed. One that has not run and is another thread's is not waited for, unless its maker is the
// thread of a looper that is quit here: it quits when it would run, or when its maker ends. Document thread, no lock
// held.
void QuitLoopersOf(const void* address);

} // namespace vetch
