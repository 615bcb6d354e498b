// The thread that runs a request's command lines.
#pragma once

#include "vetch/support/ShellCommand.h"

#include <string>
#include <vector>

// The loss when the thread does not start (see vetch::StartThread).
inline constexpr const char* kNoTagsAreMade = "no tags are made";

// The thread's input; it touches nothing else.
struct CreateParams {
    std::vector<std::string> commands; // run in this order
    vetch::ShellRequest request = {};
};

// The thread's body: prints each command to standard output and runs it. Deletes the params, a CreateParams, at the
// end. Returns null.
void* CreateTagsTask(void* params);

// Runs the commands on a detached thread and returns at once. If the system cannot start a thread, nothing runs, and
// vetch::StartThread reports that once.
void StartCreateTagsTask(std::vector<std::string> commands, vetch::ShellRequest request = {});
