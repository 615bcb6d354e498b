// SIGINT, SIGTERM and SIGHUP, as a token to check between two steps of the work.
//
// Interrupted work removes its children and temporary files. Then the program dies of the signal, so that the sender
// can see the cause.
#pragma once

#include "base/CancelToken.h"

#include <csignal>

namespace cplustags {

// Call it before other threads exist. Ignored signals stay ignored: the user wants the work to continue when the
// terminal is closed.
void CatchInterrupts();

void Interrupt(int number);              // as if the signal had arrived; ignored after another
const base::CancelToken& Interruption(); // cancelled by the first signal; lives as long as the program
[[noreturn]] void DieOfInterrupt();      // only after it is cancelled

// While it lives, signals go to other threads than the one that made it and those started meanwhile. Blocking calls of
// the main thread are then the ones to be interrupted.
class InterruptsElsewhere {
public:
    InterruptsElsewhere();
    ~InterruptsElsewhere();
    InterruptsElsewhere(const InterruptsElsewhere&) = delete;
    InterruptsElsewhere& operator=(const InterruptsElsewhere&) = delete;

private:
    sigset_t before;
};

} // namespace cplustags
