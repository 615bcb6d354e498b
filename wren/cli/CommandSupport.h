// Helpers shared by the program's commands.
#pragma once

#include <string>

namespace wren {

class ProgramOutput;

// Tags and file names may contain control characters. These functions replace them on a terminal (see TerminalText.h),
// except for WriteAsIsOrComplain().

void Complain(const std::string& text); // on standard error. Any thread

// False, after a message, when writing fails; 'what' names the text for the message ("the matches").
bool WriteOrComplain(ProgramOutput& output, const std::string& text, const char* what);
bool WriteAsIsOrComplain(ProgramOutput& output, const std::string& text, const char* what); // e.g. with colours

} // namespace wren
