// Values from any thread, waiting for the GUI thread.
#pragma once

#include <deque>
#include <functional>
#include <iterator>
#include <mutex>
#include <utility>

namespace wren {

// An item owns all that it needs: it is made on one thread, and destroyed on the GUI thread.
template <class Item>
class GuiQueue {
public:
    // Called, on the thread that adds, when the first item arrives in an empty queue: one wake-up serves all that come
    // until the next Drain(). Set it before anything is added.
    void SetWakeUp(std::function<void()> wake) { wakeUp = std::move(wake); }

    // Any thread; never waits for the GUI thread.
    void Add(Item item)
    {
        bool first = false;
        {
            const std::lock_guard lock(mutex);
            first = added.empty();
            added.push_back(std::move(item));
        }
        if (first && wakeUp)
            wakeUp();
    }

    // Gives 'handle' each item that is queued at the call, in order; an item that is added meanwhile wakes again. A
    // handler that runs an event loop may come back here: the inner call continues where the outer one is. GUI thread.
    template <class Handle>
    void Drain(const Handle& handle)
    {
        TakeAll();
        while (!taken.empty()) {
            const Item next = std::move(taken.front());
            taken.pop_front();
            handle(next);
        }
    }

private:
    void TakeAll()
    {
        const std::lock_guard lock(mutex);
        taken.insert(taken.end(), std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
        added.clear();
    }

    std::function<void()> wakeUp;
    std::mutex mutex; // a leaf, guards 'added'
    std::deque<Item> added;
    std::deque<Item> taken; // the GUI thread's
};

} // namespace wren
