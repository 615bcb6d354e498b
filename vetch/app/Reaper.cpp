#include "vetch/app/Reaper.h"

#include "vetch/app/Library.h"
#include "vetch/app/LooperState.h"
#include "vetch/app/Registry.h"

#include <optional>

namespace vetch {

namespace {

// Its destructor runs when its thread ends.
struct Maker {
    ~Maker()
    {
        for (const RegisteredLooper& registered : RegisteredLoopers())
            if (registered.state->BelongsToCaller())
                MakeOver(registered);
    }

    static void MakeOver(const RegisteredLooper& registered)
    {
        const void* const forbidden = registered.state->ForbiddenLibrary();
        registered.state->MakerEnds(forbidden && forbidden == LibraryOfClass(registered.looper));
    }
};

std::optional<LooperToken> TakeEnded()
{
    Traffic& traffic = TheTraffic();
    std::lock_guard guard(traffic.mutex);
    if (traffic.ended.empty())
        return std::nullopt;
    const LooperToken token = traffic.ended.front();
    traffic.ended.pop_front();
    return token;
}

} // namespace

void Reaper::Destroy(BLooper* looper)
{
    const std::shared_ptr<LooperState> state = looper->state;
    if (!state->BeginDestruction())
        return;
    looper->AcceptQuit(); // calls QuitAccepted() if nobody has
    state->AwaitEnd();
    delete looper;
}

bool Reaper::ReapOne()
{
    const std::optional<LooperToken> token = TakeEnded();
    if (!token)
        return false;
    // A looper that Quit() destroyed on this thread is not found.
    if (BLooper* looper = FindLooper(*token))
        Destroy(looper);
    return true;
}

void HandOverWhenMakerEnds()
{
    thread_local Maker maker;
    static_cast<void>(maker);
}

} // namespace vetch
