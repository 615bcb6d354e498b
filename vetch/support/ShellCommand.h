// Shell commands of a plug-in, which run on its threads; a host may replace how they run.
#pragma once

#include <string>

namespace vetch {

// What a plug-in knows of a sequence of command lines. The lines of one request share one object, which lives until the
// last of them has returned: its address identifies the request.
struct ShellRequest {
    // The reason for a request that the user did not make: a stale file, and the newer file that it is built from. Both
    // are empty when the user asked.
    std::string outdated;
    std::string newer;

    bool IsAskedFor() const { return outdated.empty(); }
};

using ShellRunner = int (*)(const char* command, const ShellRequest& request);

// Runs the command as system() does and waits for it; returns what system() returns. Any thread.
int RunShellCommand(const char* command, const ShellRequest& request = {});

// From now on 'runner' runs the commands, on the threads of their callers; null restores system(). A host that guards,
// waits for, or only shows commands sets one before it loads a plug-in. Returns the one before.
ShellRunner SetShellRunner(ShellRunner runner);

} // namespace vetch
