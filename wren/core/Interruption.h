// Signals that end the program, or what it does for the user.
#pragma once

#include <csignal>
#include <functional>
#include <mutex>
#include <thread>

namespace wren {

// From its making on, SIGINT, SIGTERM and SIGHUP are taken in by a thread of its own, and blocked in all others that
// are started afterwards. They end the program, unless signals are held: then each is handed on, and the program goes
// on. A signal that was ignored before stays ignored, by the program's children too. They ignore SIGPIPE.
//
// It needs no descriptor. Without a thread to be had, signals do what they did before. Make it before other threads;
// one at a time.
class Interruption {
public:
    Interruption();
    ~Interruption(); // signals do again what they did before
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    // Any thread. 'handOn' is called on the watching thread with each signal that comes until Release(), which waits
    // for it.
    void Hold(std::function<void(int signal)> handOn);
    void Release();
    int Signal() const; // the first that came while they were held, or 0

private:
    void Watch();
    void Take(int signal);

    sigset_t watched;
    sigset_t formerMask;
    void (*formerTerminalOutput)(int); // what SIGTTOU did
    void (*formerLostReader)(int);     // what SIGPIPE did
    mutable std::mutex mutex;          // guards what follows
    std::function<void(int)> handOn;   // null while they are not held
    int first = 0;
    std::thread watcher;
};

// Ends the process by the signal, as whoever waits for it expects of a program that was interrupted.
[[noreturn]] void DieBySignal(int signal);

} // namespace wren
