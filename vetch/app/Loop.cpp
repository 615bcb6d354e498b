#include "vetch/app/Loop.h"

#include "vetch/app/BLooper.h"
#include "vetch/app/Dispatch.h"
#include "vetch/app/Library.h"
#include "vetch/app/LooperState.h"
#include "vetch/app/Reaper.h"
#include "vetch/app/Registry.h"
#include "vetch/support/HeldLocks.h"

#include <atomic>
#include <cassert>

namespace vetch {

namespace {

std::atomic<int> pluginCalls = 0;

using Guard = std::unique_lock<std::mutex>;

// Dispatches the oldest message for the document thread; false when there is none.
bool DispatchOne()
{
    Traffic& traffic = TheTraffic();
    Guard lock(traffic.mutex);
    if (traffic.ofApplication.empty())
        return false;
    const auto state = traffic.ofApplication.begin()->second->shared_from_this();
    Envelope envelope = state->BeginDispatch(lock);
    lock.unlock();
    Dispatch(*FindLooper(state->token), state->token, envelope);
    state->EndDispatch();
    return true;
}

void ReapAll()
{
    while (Reaper::ReapOne()) {
    }
}

void SettleFreely()
{
    Traffic& traffic = TheTraffic();
    const auto hasWork = [&] { return !traffic.ended.empty() || !traffic.ofApplication.empty(); };
    const auto isQuiet = [&] { return traffic.ofLoopers.empty() && traffic.ending == 0; };
    for (;;) {
        RunPending();
        Guard lock(traffic.mutex);
        traffic.changed.wait(lock, [&] { return hasWork() || isQuiet(); });
        if (!hasWork())
            return;
    }
}

// Waits for the threads of loopers that have quit; false when some loopers need the reaper first.
bool AwaitEndings(Guard& lock)
{
    Traffic& traffic = TheTraffic();
    traffic.changed.wait(lock, [&] { return traffic.ending == 0 || !traffic.ended.empty(); });
    return traffic.ended.empty();
}

// Lets the looper with the oldest message dispatch it, and waits for the end of that.
void GrantTurn(Guard& lock)
{
    Traffic& traffic = TheTraffic();
    const auto [sequence, state] = *traffic.ofLoopers.begin();
    traffic.granted = sequence;
    state->Wake();
    traffic.changed.wait(lock, [&, turn = sequence] { return !traffic.ofLoopers.contains(turn); });
    traffic.granted = 0;
}

// Dispatches the oldest message of all queues; false when there is none.
bool TakeTurn()
{
    Traffic& traffic = TheTraffic();
    Guard lock(traffic.mutex);
    if (!AwaitEndings(lock))
        return true;
    const bool isLoopers =
        !traffic.ofLoopers.empty() &&
        (traffic.ofApplication.empty() || traffic.ofLoopers.begin()->first < traffic.ofApplication.begin()->first);
    if (isLoopers) {
        GrantTurn(lock);
        return true;
    }
    lock.unlock();
    return DispatchOne();
}

void SettleInTurns()
{
    do {
        ReapAll();
    } while (TakeTurn());
}

bool HasTurns()
{
    Traffic& traffic = TheTraffic();
    Guard lock(traffic.mutex);
    return traffic.turns;
}

bool HasPending()
{
    Traffic& traffic = TheTraffic();
    Guard lock(traffic.mutex);
    return !traffic.ended.empty() || !traffic.ofApplication.empty();
}

} // namespace

PluginCall::PluginCall()
{
    assert(DocumentThread() == kNoThread || OnDocumentThread());
    ++pluginCalls;
}

PluginCall::~PluginCall()
{
    assert(HeldLocks() == 0);
    // A thread woken during the call could do nothing.
    if (--pluginCalls == 0 && HasPending())
        WakeDocumentThread();
}

int PluginCall::Depth()
{
    return pluginCalls;
}

void RunPending()
{
    assert(HeldLocks() == 0);
    if (PluginCall::Depth() > 0)
        return;
    do {
        ReapAll();
    } while (DispatchOne());
}

void Settle()
{
    assert(HeldLocks() == 0);
    if (PluginCall::Depth() > 0)
        return;
    if (HasTurns())
        SettleInTurns();
    else
        SettleFreely();
}

void SetTurns(bool on)
{
    Traffic& traffic = TheTraffic();
    Guard lock(traffic.mutex);
    traffic.turns = on;
}

} // namespace vetch
