// A shell command and all that it starts, as one group that can be stopped as a whole.
#pragma once

#include "base/Result.h"

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
    // its status as waitpid() has it. Fails when no shell can be started. One command at a time.
    base::Result<int> Run(const std::string& command, const Streams& streams);

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

} // namespace wren
