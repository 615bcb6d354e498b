// Files whose readers wait until the test continues them.
#pragma once

#include <string>

// Makes a named pipe that base::OpenPlainFile() opens like a plain file on a very slow disk: a reader waits there until
// the test opens the pipe for writing, and reaches the end when the test closes it. False when it cannot be made. Call
// it while nothing is read; from then on this program's opener stays in place.
bool MakeHeldFile(const std::string& path);
