// A looper's queue, lock, thread and stage of life. Private to vetch/app.
#pragma once

#include "vetch/app/BMessage.h"
#include "vetch/app/LooperLock.h"
#include "vetch/app/ThreadNumber.h"
#include "vetch/app/Tokens.h"
#include "vetch/app/Traffic.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <thread>

namespace vetch {

// A queued message; its handler may be gone before the dispatch.
struct Envelope {
    Sequence sequence;
    HandlerToken handler;
    BMessage message;
};

// Shared by the looper, its thread and the threads that post to it or wait for its lock: they stay safe while the
// looper dies. The traffic's mutex guards everything that changes; only BeginDispatch() and Wake() are called with it
// held.
class LooperState : public std::enable_shared_from_this<LooperState> {
public:
    explicit LooperState(Service service);
    LooperState(const LooperState&) = delete;
    LooperState& operator=(const LooperState&) = delete;

    const LooperToken token;
    const Service service;

    // The queue. B_ERROR after an accepted quit.
    status_t Post(const BMessage& message, HandlerToken handler);

    // The lock. If the application's loop serves the looper, the lock is free on the document thread and refused
    // elsewhere: no looper waits for that thread.
    bool Lock();
    void Unlock();
    bool IsLocked() const; // by the calling thread

    using Dispatcher = std::function<void(Envelope&)>;

    // Starts the thread, which calls 'dispatch' with each message, the lock held. Returns its number, or B_ERROR after
    // an accepted quit and when the system has no thread.
    thread_id Run(const Dispatcher& dispatch);
    bool HasRun() const;

    // Marks the quit and drops the queue. Returns true once: that caller must call the looper's QuitAccepted() and then
    // Announced(), and until then the looper is not destroyed. False for callers that may not touch the looper.
    bool AcceptQuit();
    void Announced();

    // After an accepted quit, queues the token for the reaper if the looper's own thread will not. Then the
    // application's loop serves it, or it never ran and belongs to the caller or the document thread.
    void LeaveToReaper();
    // Keeps Quit() and the reaper from destroying this one: the application's maker destroys it.
    void KeepFromReaper();
    // Called when the maker's thread ends: a looper that never ran then belongs to the document thread, which destroys
    // it after an accepted quit.
    void MakerEnds(bool quits);
    bool BelongsToCaller() const; // never ran, and only the caller uses it

    // The document thread's side.
    //
    // True when this call must destroy the looper after its accepted quit. False when it is being destroyed already,
    // belongs to another thread, or is in a dispatch or QuitAccepted() further up on the document thread's stack.
    bool BeginDestruction();
    // Waits until the looper's thread has ended and its lock is free.
    void AwaitEnd();
    // Drops the queue and refuses further messages: the looper is being destroyed.
    void Close();
    // True when the document thread may use the looper: it runs, or belongs to that thread.
    bool IsPublished() const;
    // Begin and end the dispatch of the oldest message, for a looper that the application's loop serves.
    Envelope BeginDispatch(LooperLock::Guard& guard);
    void EndDispatch();
    void Wake(); // its turn may have come

    // A looper of this library's classes must quit at its Run(); see QuitLoopersOf().
    void ForbidLibrary(const void* library);
    const void* ForbiddenLibrary() const;

private:
    using Guard = LooperLock::Guard;

    void Loop(const Dispatcher& dispatch);
    bool WaitForTurn(Guard& guard);
    void DispatchNext(Guard& guard, const Dispatcher& dispatch);
    bool Acquire(Guard& guard);
    void Release();
    std::deque<Envelope> MarkQuit();
    void HandIn();
    bool IsOwnedByCaller() const;
    std::map<Sequence, LooperState*>& Pending() const;
    std::deque<Envelope> TakeQueue();

    Traffic& traffic;
    std::condition_variable changed;
    std::deque<Envelope> queue;
    LooperLock lock;

    ThreadNumber maker;
    bool madeOver = false; // never ran; its maker left it to the document thread
    std::thread thread;
    bool hasRun = false;
    bool quitAccepted = false;
    bool announced = false;             // QuitAccepted() was or is being called
    ThreadNumber announcer = kNoThread; // the thread that is calling it
    bool handedIn = false;
    bool destroying = false;
    int dispatching = 0; // served by the application: active dispatches on the document thread
    const void* forbiddenLibrary = nullptr;
};

} // namespace vetch
