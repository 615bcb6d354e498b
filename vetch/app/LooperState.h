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

// A message in a queue, for a handler that may be gone by the time it is dispatched.
struct Envelope {
    Sequence sequence;
    HandlerToken handler;
    BMessage message;
};

// Shared by the looper, its thread and whoever is just posting to it or waiting for its lock, so that those are safe
// while the looper dies. Everything that changes is guarded by the traffic's mutex, which BeginDispatch() and Wake()
// are called with and nothing else is.
class LooperState : public std::enable_shared_from_this<LooperState> {
public:
    explicit LooperState(Service service);
    LooperState(const LooperState&) = delete;
    LooperState& operator=(const LooperState&) = delete;

    const LooperToken token;
    const Service service;

    // The queue. B_ERROR once quit is accepted.
    status_t Post(const BMessage& message, HandlerToken handler);

    // The lock. That of a looper which the application's loop serves is free on the document thread and refused to all
    // others, since nobody waits for that thread.
    bool Lock();
    void Unlock();
    bool IsLocked() const; // by the calling thread

    using Dispatcher = std::function<void(Envelope&)>;

    // Starts the thread, which calls 'dispatch' with each message, the lock held; its number, or B_ERROR once quit is
    // accepted or when the system has no thread to give.
    thread_id Run(const Dispatcher& dispatch);
    bool HasRun() const;

    // Marks the quit and drops what is queued. True, once, for who must call the looper's QuitAccepted() and then
    // Announced(): until then the looper is not destroyed. False also for who may not touch the looper.
    bool AcceptQuit();
    void Announced();

    // After an accepted quit, queues the token for the reaper where no thread of the looper's own will do it: the
    // looper never ran and belongs to the caller or the document thread, or it is one that the application's loop
    // serves.
    void LeaveToReaper();
    // Neither the reaper nor Quit() destroys this one: the application is its maker's to destroy.
    void KeepFromReaper();
    // The thread that made the looper is ending: one that never ran belongs to the document thread from now on, which
    // destroys it when its quit is or was accepted.
    void MakerEnds(bool quits);
    bool BelongsToCaller() const; // never ran, and is the caller's alone

    // The document thread's side.
    //
    // True when this call is the one to destroy the looper, which has accepted its quit: false when it is being
    // destroyed already, still belongs to another thread, or is dispatching or being told further up on the document
    // thread.
    bool BeginDestruction();
    // Waits until nobody else is in the looper any more: its thread has ended and its lock is free.
    void AwaitEnd();
    // The looper is being destroyed: drops what is queued and refuses the rest.
    void Close();
    // True when the document thread may look at the looper and call it: it runs, or belongs to that thread.
    bool IsPublished() const;
    // One that the application's loop serves begins to dispatch the oldest message of its queue, and is done with it.
    Envelope BeginDispatch(LooperLock::Guard& guard);
    void EndDispatch();
    void Wake(); // it may be its turn

    // The library to whose loopers it must not belong when it runs; see QuitLoopersOf().
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
    bool IsCallers() const;
    std::map<Sequence, LooperState*>& Pending() const;
    std::deque<Envelope> TakeQueue();

    Traffic& traffic;
    std::condition_variable changed;
    std::deque<Envelope> queue;
    LooperLock lock;

    ThreadNumber maker;
    bool madeOver = false; // never ran, and its maker has left it to the document thread
    std::thread thread;
    bool hasRun = false;
    bool quitAccepted = false;
    bool announced = false;             // QuitAccepted() was called, or is being called
    ThreadNumber announcer = kNoThread; // the thread that is calling it
    bool handedIn = false;
    bool destroying = false;
    int dispatching = 0; // served by the application: dispatches under way on the document thread
    const void* forbiddenLibrary = nullptr;
};

} // namespace vetch
