// A shell command and all that it starts, as one group that can be stopped as a whole.
#pragma once

#include <chrono>
#include <mutex>
#include <string>
#include <sys/types.h>
#include <vector>

namespace wren {

// Commands run in a session of their own, which has no terminal: nothing in it can ask the user, or be stopped for
// trying. Standard input is /dev/null.
class ProcessGroup {
public:
    // What the command has instead of our descriptors; 'output' is its standard output and standard error.
    struct Streams {
        int output;
        std::vector<int> more; // its descriptors 3, 4, ...
    };

    // After a stop, or when the shell was killed by somebody else, the rest of the group has this long to end before it
    // is killed.
    explicit ProcessGroup(std::chrono::milliseconds patience = std::chrono::seconds(5)) : patience(patience) {}

    // Runs the command in "sh" and waits for it; once it was stopped or killed, for every process of its group. Returns
    // what system() returns: a status, or -1 with errno when no shell could be started. One command at a time.
    int Run(const std::string& command, const Streams& streams);

    // Passes the signal to the command that runs; a further call kills it. No later command starts. Any thread.
    void Stop(int signal);
    int Stopped() const; // the first signal, 0 for none. Any thread.

private:
    bool SetGroup(pid_t newGroup);
    void WaitForGroup(pid_t left) const;
    bool IsToBeKilled() const;

    const std::chrono::milliseconds patience;
    mutable std::mutex mutex; // guards what follows
    pid_t group = 0;          // 0 while nothing runs
    int stopped = 0;
    int last = 0; // what was passed on last
};

// The status of a command as a shell's $?; 127 for one that could not be started.
int ShellStatus(int status);

} // namespace wren
