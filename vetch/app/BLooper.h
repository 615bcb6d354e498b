// A handler with a queue of messages and a thread of its own that dispatches them one by one.
#pragma once

#include "vetch/app/BHandler.h"
#include "vetch/app/BMessage.h"
#include "vetch/app/Tokens.h"
#include "vetch/support/Types.h"

#include <memory>

namespace vetch {

struct Reaper;
class LooperState; // the queue, the lock and the thread: outlives the looper while its thread winds up

} // namespace vetch

constexpr uint32 B_QUIT_REQUESTED = FourCC("_QRQ");

// The rules of life and death (loopers are made with new):
//
// - Before Run() the creating thread alone owns the looper. Run() publishes it; from then on its own thread, or whoever
//   holds its lock, may touch it.
// - Only the document thread destroys a looper, so a pointer read there stays good until that thread quits it.
// - Quit() asks for the end from any thread and merges with earlier requests:
//     own thread                       marks it; the loop ends after the current message, the document thread destroys
//     document thread, running         ends the loop, joins the thread, destroys, returns
//     document thread, never run       destroys at once; if another thread made it, marks it for that thread's Run()
//     any other thread                 marks it; the document thread destroys it later
//   Once quit is accepted nothing more is dispatched, Lock() fails and PostMessage() is refused. Nothing is destroyed
//   while a thread holds the lock: one that takes it before Run() may use the looper until it unlocks.
// - What a thread made, never ran and left behind when it ended belongs to the document thread.
// - No looper ever waits for the document thread, so the lock of one that the application's loop serves is to be had on
//   that thread only. Such a looper, quit from inside its own dispatch, is destroyed when that has returned.
class BLooper : public BHandler {
public:
    explicit BLooper(vetch::Service service = vetch::Service::OwnThread);
    ~BLooper() override; // by Quit() and the reaper alone, or by the owner of a looper that never ran

    // Starts the loop; does nothing the second time. A number above 0; B_ERROR when quit was accepted: the document
    // thread has it then, and it may be gone; vetch::kNotStarted when the system has no thread: it is its maker's
    // still.
    virtual thread_id Run();
    virtual void Quit();
    virtual bool QuitRequested(); // asked by B_QUIT_REQUESTED; true by default

    virtual void DispatchMessage(BMessage* message, BHandler* handler);
    void MessageReceived(BMessage* message) override; // B_QUIT_REQUESTED quits when QuitRequested() agrees
    BLooper* Looper() const override;

    // Recursive, first come first served. The looper's own thread holds it around each dispatch. False once quit is
    // accepted, also for those who are waiting or hold it already.
    bool Lock();
    void Unlock();
    bool IsLocked() const; // by the calling thread

    // Copy the message and return at once; any thread. B_ERROR once quit is accepted. Without a handler the looper
    // itself receives it; a handler that has died by then receives nothing. 'reply' is accepted and not used.
    status_t PostMessage(uint32 what);
    status_t PostMessage(const BMessage* message);
    status_t PostMessage(const BMessage* message, BHandler* handler, BHandler* reply = nullptr);

    vetch::LooperToken LooperToken() const;
    bool HasRun() const;             // Run() was called. Any thread
    vetch::Service ServedBy() const; // any thread

protected:
    // Called once, on the thread whose Quit() was accepted first, before the loop ends: a window vanishes here. Where
    // that thread may not touch the looper (it never ran and is another's) the document thread calls it before
    // destroying.
    virtual void QuitAccepted();

    // Quits one that Run() has not run, and leaves it to the document thread on any thread: the caller may look at it
    // to the end of what it does, on the document thread, or as long as it holds the lock, on another.
    void QuitUnrun();

private:
    friend struct vetch::Reaper;
    friend class BApplication;

    void AcceptQuit();

    const std::shared_ptr<vetch::LooperState> state;
};
