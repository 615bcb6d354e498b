// The document thread's side of the message loops: dispatching, reaping what has quit, waiting for quiet, shutting
// down.
#pragma once

#include "vetch/app/BHandler.h"
#include "vetch/app/BLooper.h"

#include <functional>
#include <vector>

namespace vetch {

// True on the thread that made the application; false everywhere while there is none.
bool OnDocumentThread();

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

// Called, from any thread, when there is something new for RunPending(), or when a plug-in call that kept something
// waiting has ended. It must not call back into the framework. Once this returns the former function is called no more.
void SetWakeUp(std::function<void()> wake);

// Quits every looper whose class lives in the shared library that contains 'address', except the application, and waits
// until they are destroyed. One that has not run and is another thread's is not waited for, unless its maker is the
// thread of a looper that is quit here: it quits when it would run, or when its maker ends. Document thread, no lock
// held.
void QuitLoopersOf(const void* address);

// The live loopers' tokens, the application's among them, in the order in which they were made. Any thread.
std::vector<LooperToken> Loopers();

// The live looper with that token, or null; safe to use on the document thread.
BLooper* FindLooper(LooperToken token);

// Posts to a handler by token, to its looper's queue; B_ERROR when it is gone. Any thread.
status_t PostToHandler(HandlerToken handler, const BMessage& message);

} // namespace vetch
