// Helpers shared by the program's commands.
#pragma once

#include "base/Result.h"

#include <optional>
#include <string>

namespace wren {

class ProgramOutput;

// Tags and file names may contain control characters. These functions replace them on a terminal (see TerminalText.h),
// except for WriteAsIsOrComplain().

void Complain(const std::string& text); // on standard error. Any thread
int Unusable(const base::Error& error); // complains, and gives the exit status for what cannot be used

// False, after a message, when writing fails; 'what' names the text for the message ("the matches").
bool WriteOrComplain(ProgramOutput& output, const std::string& text, const char* what);
bool WriteAsIsOrComplain(ProgramOutput& output, const std::string& text, const char* what); // e.g. with colours

// Whether the output shows colours: a terminal that can, and a user who has not refused them.
bool WantsColour(const ProgramOutput& output);

// The beginning of a line about a place, as compilers and grep write it: "path:12" or, with a column, "path:12:8".
std::string ShownPlace(const std::string& path, long line, std::optional<long> column, bool colour);

} // namespace wren
