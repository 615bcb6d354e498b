// What loopers want done on the screen, waiting for the GUI thread.
#pragma once

#include <deque>
#include <functional>
#include <mutex>

namespace wren {

class UpdateQueue {
public:
    using Update = std::function<void()>;

    // Called, on the thread that adds, when the first update arrives in an empty queue: one wake-up serves all that
    // come until the next Drain(). Set it before anything is added.
    void SetWakeUp(std::function<void()> wake);

    void Add(Update update); // any thread; never waits for the GUI thread

    // Carries out, in order, what is queued when it is called; what is added meanwhile wakes anew. An update that runs
    // an event loop may come back here: the inner call goes on where the outer one is. GUI thread.
    void Drain();

private:
    void TakeAll();

    std::function<void()> wakeUp;
    std::mutex mutex; // a leaf, guards 'added'
    std::deque<Update> added;
    std::deque<Update> taken; // the GUI thread's
};

} // namespace wren
