// Shell commands that a plug-in runs on its own threads, and a host that wants to know of them.
#pragma once

namespace vetch {

using ShellRunner = int (*)(const char* command);

// Runs the command as system() does and waits for it; what it answers is what system() answers. Any thread.
int RunShellCommand(const char* command);

// From now on commands go to 'runner' instead, on whatever thread they are run; null: to system() again. A host that
// waits for generated tags, or only shows what would be run, sets one before it loads a plug-in.
void SetShellRunner(ShellRunner runner);

} // namespace vetch
