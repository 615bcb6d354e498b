// Runs a program with pipes for its standard input, output and error.
#pragma once

#include "base/CancelToken.h"
#include "base/Descriptor.h"
#include "base/Process.h"
#include "base/Result.h"

#include <chrono>
#include <string>
#include <vector>

namespace base {

struct Command {
    std::vector<std::string> words; // the first is the program's path
    std::string directory;          // working directory; "" for the current one
    std::string temporaries;        // its $TMPDIR; "" for ours
};

// Killed when its starting thread ends for any reason, and when its owner goes. It has its own process group: Control-C
// reaches only us, and we stop it. Our ends of the pipes do not block. Not thread-safe.
struct ChildProcess {
    Descriptor input; // for writing
    Descriptor output;
    Descriptor errors;
    Process process;
};

Result<ChildProcess> StartChild(const Command& command);

// The beginning of the program's standard output; "" when it cannot be run. Fails when it takes longer than the limit,
// and when it is cancelled; the program is killed then.
Result<std::string> OutputOf(const std::vector<std::string>& words, std::chrono::milliseconds limit,
                             const CancelToken& cancel);

} // namespace base
