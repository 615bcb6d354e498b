// A handler with a message queue and a thread that dispatches the messages one by one.
#pragma once

#include "vetch/app/BHandler.h"
#include "vetch/app/BMessage.h"
#include "vetch/app/Tokens.h"
#include "vetch/support/Types.h"

#include <memory>

namespace vetch {

struct Reaper;
class LooperState; // queue, lock and thread; outlives the looper until its thread has ended

} // namespace vetch

constexpr uint32 B_QUIT_REQUESTED = FourCC("_QRQ");

// Life and death (loopers are made with new):
//
// - Before Run() only the creating thread uses the looper. Run() publishes it; from then on its own thread and the
//   holder of its lock may touch it.
// - Only the document thread destroys a looper, so a pointer read there stays valid until that thread quits it.
// - Quit() may be called on any thread, more than once:
//     own thread                       marks it; the loop ends after the current message, the document thread destroys
//     document thread, running         ends the loop, joins the thread, destroys, returns
//     document thread, never run       destroys at once; if another thread made it, marks it for that thread's Run()
//     any other thread                 marks it; the document thread destroys it later
//   After an accepted quit nothing is dispatched, Lock() fails and PostMessage() is refused. Nothing is destroyed
//   while a thread holds the lock: a thread that takes it before Run() may use the looper until it unlocks.
// - When a thread ends, its loopers that never ran belong to the document thread.
// - No looper waits for the document thread. A looper that the application's loop serves can be locked on that thread
//   only. When it quits inside its own dispatch, it is destroyed after that returns.
class BLooper : public BHandler {
public:
    explicit BLooper(vetch::Service service = vetch::Service::OwnThread);
    ~BLooper() override; // called by Quit() and the reaper, or by the owner of a looper that never ran

    // Starts the loop; a second call does nothing. Returns a number above 0. B_ERROR: quit was accepted; the document
    // thread owns the looper and may have destroyed it. vetch::kNotStarted: the system has no thread; the maker still
    // owns it.
    virtual thread_id Run();
    virtual void Quit();
    virtual bool QuitRequested(); // decides on B_QUIT_REQUESTED; true by default

    virtual void DispatchMessage(BMessage* message, BHandler* handler);
    void MessageReceived(BMessage* message) override; // B_QUIT_REQUESTED quits when QuitRequested() agrees
    BLooper* Looper() const override;

    // Recursive, first come first served. The looper's own thread holds it around each dispatch. False after an
    // accepted quit, also for threads that are waiting or hold it already.
    bool Lock();
    void Unlock();
    bool IsLocked() const; // by the calling thread

    // Copies the message and returns at once; any thread. B_ERROR after an accepted quit. Without a handler the looper
    // itself receives it; a handler that died before the dispatch receives nothing. 'reply' is ignored.
    status_t PostMessage(uint32 what);
    status_t PostMessage(const BMessage* message);
    status_t PostMessage(const BMessage* message, BHandler* handler, BHandler* reply = nullptr);

    vetch::LooperToken LooperToken() const;
    bool HasRun() const;             // any thread
    vetch::Service ServedBy() const; // any thread

protected:
    // Called once before the loop ends, on the thread whose Quit() was accepted first: a window vanishes here. If that
    // thread may not touch the looper (another thread's, never run), the document thread calls it before destruction.
    virtual void QuitAccepted();

    // Quits a looper that never ran, on any thread, and leaves it to the document thread. On the document thread the
    // caller may use it until it returns; on another thread, while it holds the lock.
    void QuitUnrun();

private:
    friend struct vetch::Reaper;
    friend class BApplication;

    void AcceptQuit();

    const std::shared_ptr<vetch::LooperState> state;
};
