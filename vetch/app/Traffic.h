// State that all loopers share: messages under way, turns, and ended loopers.
#pragma once

#include "vetch/app/Tokens.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>

namespace vetch {

class LooperState;

// A message's position in the order of posting, from 1.
using Sequence = std::uint64_t;

// 'mutex' guards everything here and everything that changes in a LooperState. With one mutex the oldest message and
// the moment of quiet are exact. Its sections are short and call no other code.
struct Traffic {
    std::mutex mutex;
    std::condition_variable changed; // the document thread waits here

    Sequence lastSequence = 0;
    std::map<Sequence, LooperState*> ofApplication; // queued for the document thread
    std::map<Sequence, LooperState*> ofLoopers;     // queued, or being dispatched on loopers' threads
    int ending = 0;                                 // loopers' threads that dispatch no more and have not ended
    std::deque<LooperToken> ended;                  // waiting for the reaper

    bool turns = false;
    Sequence granted = 0; // with turns: the only message that a looper may dispatch
};

Traffic& TheTraffic();

} // namespace vetch
