// Signals that end the program or its current task.
#pragma once

#include <csignal>
#include <functional>
#include <mutex>
#include <thread>

namespace wren {

// From construction, a separate thread receives SIGINT, SIGTERM and SIGHUP; all threads started later block them. They
// end the program, unless signals are held: then each is handed on, and the program continues. A signal that was
// ignored before stays ignored, by the program's children too. They ignore SIGPIPE.
//
// Needs no descriptor. When no thread can be started, signals keep their previous effect. Make it before other threads;
// one at a time.
class Interruption {
public:
    Interruption();
    ~Interruption(); // restores the previous effect of signals
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    // Any thread. 'handOn' is called on the watching thread with each signal until Release(), which waits for the call.
    void Hold(std::function<void(int signal)> handOn);
    void Release();
    int Signal() const; // the first signal received while held, or 0

private:
    void Watch();
    void Take(int signal);

    sigset_t watched;
    sigset_t formerMask;
    void (*formerTerminalOutput)(int); // previous handler of SIGTTOU
    void (*formerLostReader)(int);     // previous handler of SIGPIPE
    mutable std::mutex mutex;          // guards the members below
    std::function<void(int)> handOn;   // null while signals are not held
    int first = 0;
    std::thread watcher;
};

// Ends the process by the signal, as the parent of an interrupted program expects.
[[noreturn]] void DieBySignal(int signal);

} // namespace wren
