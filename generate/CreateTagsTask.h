// The thread that runs the command lines of one request for tags.
#pragma once

#include "vetch/support/ShellCommand.h"

#include <string>
#include <vector>

// What the user does without when the thread does not start (see vetch::StartThread).
inline constexpr const char* kNoTagsAreMade = "no tags are made";

// What the thread is given, and all that it touches.
struct CreateParams {
    std::vector<std::string> commands; // run in this order
    vetch::ShellRequest request = {};
};

// The thread's body: says what it executes on standard output, runs it, and deletes the params, a CreateParams, at the
// end. Answers null.
void* CreateTagsTask(void* params);

// Runs the commands on a detached thread and returns at once. When the system has no thread to give, nothing
// runs, and that is reported once (vetch::StartThread).
void StartCreateTagsTask(std::vector<std::string> commands, vetch::ShellRequest request = {});
