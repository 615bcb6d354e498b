// Shell commands that a plug-in runs on its own threads, and a host that runs them in its own way.
#pragma once

#include <string>

namespace vetch {

// What a plug-in knows of the command lines that it hands over one after the other. The lines of one request share one
// object, which lives until the last of them has returned: its address tells requests apart.
struct ShellRequest {
    // Why the plug-in does this by itself: a file that it found out of date, and the newer file that the other is made
    // from. Both empty when the user asked.
    std::string outdated;
    std::string newer;

    bool IsAskedFor() const { return outdated.empty(); }
};

using ShellRunner = int (*)(const char* command, const ShellRequest& request);

// Runs the command as system() does and waits for it; returns what system() returns. Any thread.
int RunShellCommand(const char* command, const ShellRequest& request = {});

// From now on commands go to 'runner' instead, on whatever thread they are run; null: to system() again. A host that
// guards, waits for, or only shows what would be run sets one before it loads a plug-in.
void SetShellRunner(ShellRunner runner);

} // namespace vetch
