#include "wren/desktop/display/UpdateQueue.h"

#include <iterator>
#include <utility>

namespace wren {

void UpdateQueue::SetWakeUp(std::function<void()> wake)
{
    wakeUp = std::move(wake);
}

void UpdateQueue::Add(Update update)
{
    bool first = false;
    {
        const std::lock_guard lock(mutex);
        first = added.empty();
        added.push_back(std::move(update));
    }
    if (first && wakeUp)
        wakeUp();
}

void UpdateQueue::Drain()
{
    TakeAll();
    while (!taken.empty()) {
        const Update next = std::move(taken.front());
        taken.pop_front();
        next();
    }
}

void UpdateQueue::TakeAll()
{
    const std::lock_guard lock(mutex);
    taken.insert(taken.end(), std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
    added.clear();
}

} // namespace wren
