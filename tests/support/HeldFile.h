// Files whose readers have to wait until the test lets them go on.
#pragma once

#include <string>

// In programs that link test_held_files, a named pipe that this makes is read as a plain file on a very slow disk would
// be: whoever opens it waits until the test opens it for writing, and has read it when that is closed again. False when
// it cannot be made.
bool MakeHeldFile(const std::string& path);
