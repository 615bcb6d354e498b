#include "symbols/Turns.h"

#include <chrono>

namespace symbols {

namespace {

constexpr std::chrono::milliseconds kPatience{50}; // between two looks at the token

} // namespace

Turns::Turn Turns::Take(const base::CancelToken& cancel)
{
    std::unique_lock lock(mutex);
    while (isTaken && !cancel.IsCancelled())
        changed.wait_for(lock, kPatience);
    if (isTaken)
        return Turn(nullptr);
    isTaken = true;
    return Turn(this);
}

Turns::Turn::~Turn()
{
    if (turns == nullptr)
        return;
    const std::lock_guard lock(turns->mutex);
    turns->isTaken = false;
    turns->changed.notify_one();
}

} // namespace symbols
