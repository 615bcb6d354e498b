#include "vetch/app/LooperState.h"

#include "vetch/app/WakeUp.h"
#include "vetch/support/HeldLocks.h"
#include "vetch/support/ThreadStart.h"

#include <atomic>
#include <cassert>
#include <optional>
#include <utility>

namespace vetch {

namespace {

LooperToken NextToken()
{
    static std::atomic<LooperToken> last = 0;
    return ++last;
}

} // namespace

LooperState::LooperState(Service service)
    : token(NextToken()), service(service), traffic(TheTraffic()), maker(CurrentThread())
{
}

// The queue

std::map<Sequence, LooperState*>& LooperState::Pending() const
{
    return service == Service::Application ? traffic.ofApplication : traffic.ofLoopers;
}

status_t LooperState::Post(const BMessage& message, HandlerToken handler)
{
    Envelope envelope{0, handler, message};
    {
        Guard guard(traffic.mutex);
        if (quitAccepted)
            return B_ERROR;
        envelope.sequence = ++traffic.lastSequence;
        // Messages of a looper that never ran do not count as under way.
        if (hasRun || service == Service::Application)
            Pending().emplace(envelope.sequence, this);
        queue.push_back(std::move(envelope));
        changed.notify_all();
        traffic.changed.notify_all();
    }
    if (service == Service::Application)
        WakeDocumentThread();
    return B_OK;
}

std::deque<Envelope> LooperState::TakeQueue()
{
    for (const Envelope& envelope : queue)
        Pending().erase(envelope.sequence);
    traffic.changed.notify_all();
    return std::exchange(queue, {});
}

// The lock

bool LooperState::Lock()
{
    Guard guard(traffic.mutex);
    return Acquire(guard);
}

void LooperState::Unlock()
{
    Guard guard(traffic.mutex);
    Release();
}

bool LooperState::IsLocked() const
{
    Guard guard(traffic.mutex);
    return lock.IsHeldByCaller();
}

bool LooperState::Acquire(Guard& guard)
{
    if (service == Service::Application && !OnDocumentThread())
        return false;
    if (!lock.Acquire(guard, changed, quitAccepted))
        return false;
    if (service == Service::OwnThread)
        CountLock();
    return true;
}

void LooperState::Release()
{
    lock.Release(changed);
    if (service == Service::OwnThread)
        CountUnlock();
}

// The thread

thread_id LooperState::Run(const Dispatcher& dispatch)
{
    Guard guard(traffic.mutex);
    if (quitAccepted)
        return B_ERROR;
    if (!hasRun && service == Service::OwnThread) {
        thread = StartThread("a window is not shown", [this, dispatch] { Loop(dispatch); });
        if (!thread.joinable())
            return kNotStarted;
        for (const Envelope& envelope : queue)
            traffic.ofLoopers.emplace(envelope.sequence, this);
    }
    hasRun = true;
    return static_cast<thread_id>(token);
}

bool LooperState::HasRun() const
{
    Guard guard(traffic.mutex);
    return hasRun;
}

void LooperState::Loop(const Dispatcher& dispatch)
{
    {
        Guard guard(traffic.mutex);
        while (WaitForTurn(guard) && Acquire(guard))
            DispatchNext(guard, dispatch);
        changed.wait(guard, [&] { return announcer == kNoThread; });
        --traffic.ending;
        HandIn();
    }
    WakeDocumentThread();
}

bool LooperState::WaitForTurn(Guard& guard)
{
    changed.wait(guard, [&] {
        return quitAccepted || (!queue.empty() && (!traffic.turns || traffic.granted == queue.front().sequence));
    });
    return !quitAccepted;
}

void LooperState::DispatchNext(Guard& guard, const Dispatcher& dispatch)
{
    std::optional<Envelope> envelope = std::move(queue.front());
    queue.pop_front();
    const Sequence sequence = envelope->sequence;
    guard.unlock();
    dispatch(*envelope);
    envelope.reset();
    guard.lock();
    Release();
    traffic.ofLoopers.erase(sequence);
    traffic.changed.notify_all();
}

// The end

bool LooperState::AcceptQuit()
{
    std::deque<Envelope> dropped; // destroyed after the mutex is unlocked
    Guard guard(traffic.mutex);
    dropped = MarkQuit();
    // In one step with the mark: in between, the document thread could destroy the looper.
    if (announced || !(hasRun || IsOwnedByCaller()))
        return false;
    announced = true;
    announcer = CurrentThread();
    return true;
}

std::deque<Envelope> LooperState::MarkQuit()
{
    if (std::exchange(quitAccepted, true))
        return {};
    if (hasRun && service == Service::OwnThread)
        ++traffic.ending;
    changed.notify_all();
    return TakeQueue();
}

void LooperState::Announced()
{
    Guard guard(traffic.mutex);
    announcer = kNoThread;
    changed.notify_all();
}

bool LooperState::BelongsToCaller() const
{
    Guard guard(traffic.mutex);
    return IsOwnedByCaller();
}

bool LooperState::IsOwnedByCaller() const
{
    return !hasRun && (madeOver ? OnDocumentThread() : maker == CurrentThread());
}

void LooperState::LeaveToReaper()
{
    {
        Guard guard(traffic.mutex);
        const bool isDocuments = service == Service::Application || (!hasRun && maker == DocumentThread());
        if (!quitAccepted || dispatching > 0 || !(isDocuments || IsOwnedByCaller()))
            return;
        HandIn();
    }
    WakeDocumentThread();
}

void LooperState::KeepFromReaper()
{
    Guard guard(traffic.mutex);
    destroying = true;
}

void LooperState::HandIn()
{
    madeOver = true;
    if (handedIn || destroying)
        return;
    handedIn = true;
    traffic.ended.push_back(token);
    traffic.changed.notify_all();
}

void LooperState::MakerEnds(bool quits)
{
    std::deque<Envelope> dropped; // destroyed after the mutex is unlocked
    {
        Guard guard(traffic.mutex);
        madeOver = true;
        if (quits)
            dropped = MarkQuit();
        if (!quitAccepted)
            return;
        HandIn();
    }
    WakeDocumentThread();
}

bool LooperState::BeginDestruction()
{
    Guard guard(traffic.mutex);
    if (destroying || dispatching > 0 || announcer == CurrentThread() || !(hasRun || IsOwnedByCaller()))
        return false;
    destroying = true;
    return true;
}

void LooperState::AwaitEnd()
{
    if (thread.joinable())
        thread.join();
    Guard guard(traffic.mutex);
    // A wait for the caller's own lock would never end; assertions report that case.
    changed.wait(guard, [&] { return announcer == kNoThread && (lock.IsFree() || lock.IsHeldByCaller()); });
}

void LooperState::Close()
{
    assert(!thread.joinable());
    std::deque<Envelope> dropped; // destroyed after the mutex is unlocked
    Guard guard(traffic.mutex);
    quitAccepted = true;
    dropped = TakeQueue();
    changed.notify_all();
}

bool LooperState::IsPublished() const
{
    Guard guard(traffic.mutex);
    return hasRun || IsOwnedByCaller();
}

Envelope LooperState::BeginDispatch(Guard& guard)
{
    Envelope envelope = std::move(queue.front());
    queue.pop_front();
    traffic.ofApplication.erase(envelope.sequence);
    ++dispatching;
    Acquire(guard);
    return envelope;
}

void LooperState::EndDispatch()
{
    Guard guard(traffic.mutex);
    Release();
    if (--dispatching == 0 && quitAccepted)
        HandIn();
}

void LooperState::Wake()
{
    changed.notify_all();
}

void LooperState::ForbidLibrary(const void* library)
{
    Guard guard(traffic.mutex);
    forbiddenLibrary = library;
}

const void* LooperState::ForbiddenLibrary() const
{
    Guard guard(traffic.mutex);
    return forbiddenLibrary;
}

} // namespace vetch
