// Files whose readers wait until the test continues them.
#pragma once

#include <string>

// Makes a named pipe. Programs that link test_held_files read it as a plain file on a very slow disk. A reader waits
// until the test opens it for writing, and reaches the end when the test closes it. False when it cannot be made.
bool MakeHeldFile(const std::string& path);
