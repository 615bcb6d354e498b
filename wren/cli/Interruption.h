// Commands that run for the user, who may interrupt them.
#pragma once

#include <csignal>
#include <mutex>
#include <sys/types.h>
#include <thread>

namespace wren {

// From its making on, SIGINT, SIGTERM and SIGHUP are taken in by a thread of its own, and blocked in all others that are
// started afterwards. They end the program, unless signals are held: then they end the command that runs. The first is
// passed on to all of the command's processes, any further one kills them. A signal that was ignored before stays ignored,
// by the commands too. They ignore SIGPIPE.
//
// Make it before other threads; one at a time.
class Interruption {
public:
    Interruption();
    ~Interruption(); // signals do again what they did before
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    // Any thread.
    void Hold();        // until Release()
    void Release();     // whoever held them looks at Signal() afterwards
    int Signal() const; // the first that came while they were held, or 0

    // Runs the command in a shell, in a process group of its own, without input and with its output on standard error,
    // and waits for it; once interrupted, for every process of its group. Answers as system() does. Signals are held. One
    // command at a time; any thread.
    int Run(const char* command);

private:
    void Watch();
    void Take(int signal);
    pid_t StartShell(const char* command) const;
    bool IsInterrupted() const { return Signal() != 0; }
    void SetGroup(pid_t newGroup);

    sigset_t watched;
    sigset_t formerMask;
    void (*formerTerminalOutput)(int); // what SIGTTOU did
    void (*formerLostReader)(int);     // what SIGPIPE did
    int signals;                       // descriptors: signals that have come, and the end
    int end;
    mutable std::mutex mutex; // guards what follows
    bool held = false;
    int first = 0;
    pid_t group = 0; // of the command that runs; 0 for none
    std::thread watcher;
};

// Ends the process by the signal, as whoever waits for it expects of a program that was interrupted.
[[noreturn]] void DieBySignal(int signal);

} // namespace wren
