// A program that is run with pipes for its standard input, output and error.
#pragma once

#include "base/Descriptor.h"
#include "base/Process.h"
#include "base/Result.h"

#include <string>
#include <vector>

namespace tagging {

struct Command {
    std::vector<std::string> words; // the first is the program's path
    std::string directory;          // where it runs; "" for the current one
    std::string temporaries;        // its $TMPDIR; "" for ours
};

// Dies with the thread that started it, however that ends, and with its owner. It has a process group of its own:
// Control-C is meant for us, and it is for us to stop it. The pipes' ends here do not block. Not thread-safe.
struct ChildProcess {
    base::Descriptor input; // to be written to
    base::Descriptor output;
    base::Descriptor errors;
    base::Process process;
};

base::Result<ChildProcess> StartChild(const Command& command);

// What a program writes to its standard output; "" when it cannot be run.
std::string OutputOf(const std::vector<std::string>& words);

} // namespace tagging
