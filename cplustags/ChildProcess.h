// A program that is run with pipes for its standard input, output and error.
#pragma once

#include "base/Descriptor.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace cplustags {

struct Command {
    std::vector<std::string> words; // the first is the program's path
    std::string directory;          // where it runs; "" for the current one
    std::string temporaries;        // its $TMPDIR; "" for ours
};

// Dies with the thread that started it, however that ends, and with its owner. It has a process group of its own:
// whoever presses Control-C means us, and it is for us to stop it. The pipes' ends here do not block. Not thread-safe.
class ChildProcess {
public:
    // When it cannot be started Error() is not empty and nothing else may be called. A program that cannot be run says
    // so on its standard error and ends with status 127.
    explicit ChildProcess(const Command& command);
    ~ChildProcess(); // kills it if it still runs
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    const std::string& Error() const { return error; }

    base::Descriptor input; // to be written to
    base::Descriptor output;
    base::Descriptor errors;

    void Kill();
    int Wait();                   // until it ends; its status as waitpid() has it
    int WaitOrKill(int patience); // the same, but kills it after so many milliseconds

private:
    std::string error;
    pid_t process = -1;
    int status = 0;
};

// What a program writes to its standard output; "" when it cannot be run.
std::string OutputOf(const std::vector<std::string>& words);

} // namespace cplustags
