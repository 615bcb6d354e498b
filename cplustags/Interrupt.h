// SIGINT, SIGTERM and SIGHUP, as something to look at between two steps of the work.
//
// Work that is asked to stop undoes what it has begun, its children and temporary files first, and then the program
// dies of the signal, which is how whoever sent it knows.
#pragma once

#include <csignal>

namespace cplustags {

// To be called before there are other threads. A signal that is ignored stays so: somebody wants the work to go on when
// the terminal is closed.
void CatchInterrupts();

void Interrupt(int number);         // as if the signal had come, if none has
bool Interrupted();                 // any thread
int InterruptDescriptor();          // readable from the first signal on: for poll(); -1 when none are caught
[[noreturn]] void DieOfInterrupt(); // once Interrupted()

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
