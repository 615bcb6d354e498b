// SIGINT, SIGTERM and SIGHUP, as something to look at between two steps of the work.
//
// Work that is asked to stop undoes what it has begun, its children and temporary files first, and then the program
// dies of the signal, which is how whoever sent it knows.
#pragma once

#include "base/CancelToken.h"

#include <csignal>

namespace cplustags {

// To be called before there are other threads. A signal that is ignored stays so: somebody wants the work to go on when
// the terminal is closed.
void CatchInterrupts();

void Interrupt(int number);              // as if the signal had come, if none has
const base::CancelToken& Interruption(); // cancelled by the first signal; lives as long as the program
[[noreturn]] void DieOfInterrupt();      // once it is cancelled

// While it lives, the thread that made it and those started meanwhile leave the signals to others: calls of the main
// thread that wait are then the ones to be broken off.
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
