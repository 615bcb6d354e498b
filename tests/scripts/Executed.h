// What the plug-in says that it executes, found in everything that a session wrote on standard error.
#pragma once

#include <string>

// The commands as they were announced, those for the system's tags first: the two kinds run at the same time and so
// come in any order, each kind among itself in its own. What the commands said themselves is left out.
std::string ExecutedCommands(const std::string& errors);
