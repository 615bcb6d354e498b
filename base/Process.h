// A child process.
#pragma once

#include "base/Descriptor.h"
#include "base/Result.h"

#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace base {

// What to run, and how. No shell interprets any of it.
struct Program {
    static constexpr int kNoInput = -1; // in place of a descriptor: empty input

    enum class Group {
        Own,       // a process group: signals from the terminal to ours do not reach it
        OwnSession // a session: without a terminal, it cannot ask the user or be stopped for trying
    };

    std::string path;
    std::vector<std::string> words;                             // the first is argv[0]
    std::string directory;                                      // working directory; "" for the current one
    std::vector<std::pair<std::string, std::string>> variables; // replace ours in its environment
    std::vector<int> descriptors;                               // borrowed; they become its 0, 1, 2 and so on
    Group group = Group::OwnSession;
    std::vector<int> defaultSignals; // with the default action there, even if we ignore them
    bool diesWithThread = false;     // killed when the thread that started it ends
    bool dumpsCore = true;
};

// Leads its own process group, with no signals blocked. Inherits the given descriptors and those of ours that are not
// close-on-exec. Movable; not thread-safe.
class Process {
public:
    // Returns once the program runs, or with the error: "cannot start PATH" when no process can be created, "cannot go
    // to DIRECTORY", or "cannot run PATH". Any thread.
    static Result<Process> Start(const Program& program);

    Process(Process&& other) noexcept;
    Process& operator=(Process&& other) noexcept;
    ~Process(); // kills the group unless Wait() was called, and waits for the program

    pid_t Number() const { return number; } // also its group's; 0 after Wait()

    void Kill(); // the whole group; does nothing after Wait()

    // Waits for the end. Returns the status as from waitpid(); -1 with errno if other code has already waited for it.
    int Wait();
    int WaitOrKill(int patience); // the same, but kills it after 'patience' milliseconds

    // Waits for the end but keeps the process a zombie: its number stays taken, so a signal to the group cannot reach
    // others. Returns whether a signal ended it.
    bool WaitUntilEnded() const;

    // Readable once it has ended. Not open, with errno, when the system refuses one.
    Descriptor EndDescriptor() const;

private:
    explicit Process(pid_t number) : number(number) {}

    pid_t number;
    int status = 0;
};

// A status of Wait() as a shell's $?: 128 + n if signal n ended the program, 127 if it could not be started.
int ShellStatus(int status);

} // namespace base
