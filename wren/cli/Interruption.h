// A command that runs for the user, who may interrupt it.
#pragma once

namespace wren {

// While one lives, SIGINT, SIGTERM and SIGHUP do not end the program but the command that runs: the first is passed on to
// all of its processes, any further one kills them. Signals that were ignored before stay ignored, for the command too.
// One at a time; made and destroyed on one thread.
class Interruption {
public:
    Interruption();
    ~Interruption(); // signals do again what they did before
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    int Signal() const; // the one that came first, or 0. Any thread

    // Runs the command in a shell, in a process group of its own, without input and with its output on standard error,
    // and waits for it; once interrupted, for every process of its group. Answers as system() does. One command at a time;
    // any thread.
    int Run(const char* command);
};

// Ends the process by the signal, as whoever waits for it expects of a program that was interrupted.
[[noreturn]] void DieBySignal(int signal);

} // namespace wren
