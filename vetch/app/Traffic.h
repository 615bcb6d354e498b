// What all loopers share: the messages under way, whose turn it is, and the loopers that have ended.
#pragma once

#include "vetch/app/Tokens.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>

namespace vetch {

class LooperState;

// The place of a message in the order in which all messages were posted, from 1.
using Sequence = std::uint64_t;

// 'mutex' guards everything here and everything that changes in a LooperState. One mutex for all of them is what makes
// the choice of the oldest message, and the moment of quiet, exact. Every section is short, and none calls out.
struct Traffic {
    std::mutex mutex;
    std::condition_variable changed; // the document thread waits here

    Sequence lastSequence = 0;
    std::map<Sequence, LooperState*> ofApplication; // queued for the document thread
    std::map<Sequence, LooperState*> ofLoopers;     // queued or being dispatched by the threads of loopers
    int ending = 0;                                 // threads of loopers that will dispatch no more and have yet to end
    std::deque<LooperToken> ended;                  // waiting for the reaper

    bool turns = false;
    Sequence granted = 0; // with turns, the one message that a looper may dispatch now
};

Traffic& TheTraffic();

} // namespace vetch
