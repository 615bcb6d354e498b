// A shell command and the processes it starts, as one group that can be stopped as a whole.
#pragma once

#include "base/Result.h"

#include <chrono>
#include <mutex>
#include <string>
#include <sys/types.h>
#include <vector>

namespace wren {

// Commands run in a separate session without a terminal: no process in it can ask the user, or be stopped for trying.
// Standard input is /dev/null.
class ProcessGroup {
public:
    // The command's descriptors; 'output' is its standard output and standard error.
    struct Streams {
        int output;
        std::vector<int> more; // its descriptors 3, 4, ...
    };

    // The time that the rest of the group has to end after a stop, or after another process killed the shell, before it
    // is killed.
    explicit ProcessGroup(std::chrono::milliseconds patience = std::chrono::seconds(5)) : patience(patience) {}

    // Runs the command in "sh" and waits for it; after a stop or a kill, for every process of its group. Returns its
    // status in the form of waitpid(). Fails when no shell can be started. One command at a time.
    base::Result<int> Run(const std::string& command, const Streams& streams);

    // Passes the signal to the running command; a second call kills it. No later command starts. Any thread.
    void Stop(int signal);
    int Stopped() const; // the first signal, 0 for none. Any thread.

private:
    bool SetGroup(pid_t newGroup);
    void WaitForGroup(pid_t left) const;
    bool IsToBeKilled() const;

    const std::chrono::milliseconds patience;
    mutable std::mutex mutex; // guards the members below
    pid_t group = 0;          // 0 while nothing runs
    int stopped = 0;
    int last = 0; // the signal passed on last
};

} // namespace wren
