// A program that runs beside this one.
#pragma once

#include "base/Descriptor.h"
#include "base/Result.h"

#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace base {

// What is to be run, and how. No shell reads any of it.
struct Program {
    static constexpr int kNoInput = -1; // in the place of a descriptor: there is nothing to read

    enum class Group {
        Own,       // a process group: what a terminal sends to ours does not reach it
        OwnSession // a session: the program has no terminal, so it cannot ask the user or be stopped for trying
    };

    std::string path;
    std::vector<std::string> words;                             // the first is the program's name for itself
    std::string directory;                                      // where it runs; "" for the current one
    std::vector<std::pair<std::string, std::string>> variables; // of its environment, in place of ours of that name
    std::vector<int> descriptors;                               // borrowed; they become its 0, 1, 2 and so on
    Group group = Group::OwnSession;
    std::vector<int> defaultSignals; // those that act as usual there, though we may ignore them
    bool diesWithThread = false;     // killed when the thread that starts it ends, however that happens
    bool dumpsCore = true;
};

// It is the first of its process group. No signal is blocked in it. It inherits the descriptors that it is given and
// those of ours that are not close-on-exec. Movable; not thread-safe.
class Process {
public:
    // Returns once the program runs, or with the error why it does not: "cannot start PATH" when there is no process to
    // be had, "cannot go to DIRECTORY", or "cannot run PATH". Any thread.
    static Result<Process> Start(const Program& program);

    Process(Process&& other) noexcept;
    Process& operator=(Process&& other) noexcept;
    ~Process(); // kills the group if the program was not waited for, and waits for the program

    pid_t Number() const { return number; } // also its group's; 0 once it has been waited for

    void Kill(); // it and its group; nothing once it has been waited for

    // Until it ends. Returns its status as waitpid() has it; -1 with errno when somebody else has waited for it.
    int Wait();
    int WaitOrKill(int patience); // the same, but kills it after so many milliseconds

    // Waits until it has ended but leaves its number taken, and with it its group's, so that a signal to the group
    // cannot reach strangers. Returns whether a signal ended it.
    bool WaitUntilEnded() const;

    // Readable once it has ended. Not open when the system has none.
    Descriptor EndDescriptor() const;

private:
    explicit Process(pid_t number) : number(number) {}

    pid_t number;
    int status = 0;
};

// A status of Wait() as a shell's $?: 128 + n when signal n ended the program; 127 for one that could not be started.
int ShellStatus(int status);

} // namespace base
