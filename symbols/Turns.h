// Work of which only one piece runs at a time, and whose waiting can be cancelled.
#pragma once

#include "base/CancelToken.h"

#include <condition_variable>
#include <mutex>

namespace symbols {

// Any thread.
class Turns {
public:
    // A turn, until its destruction. Converts to false when the waiting was cancelled.
    class Turn {
    public:
        explicit Turn(Turns* turns) : turns(turns) {}
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        ~Turn();
        explicit operator bool() const { return turns != nullptr; }

    private:
        Turns* const turns;
    };

    Turn Take(const base::CancelToken& cancel);

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool isTaken = false;
};

} // namespace symbols
