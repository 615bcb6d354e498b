// What the commands of the program have in common.
#pragma once

#include <string>

namespace wren {

class ProgramOutput;

// Tags and names of files may hold anything. What goes to a terminal through these goes without control characters (see
// TerminalText.h), but for what the last of them writes.

void Complain(const std::string& text); // on standard error. Any thread

// False, having complained, when it could not be written; 'what' is the text in some words ("the matches").
bool WriteOrComplain(ProgramOutput& output, const std::string& text, const char* what);
bool WriteAsIsOrComplain(ProgramOutput& output, const std::string& text, const char* what); // with colours, say

} // namespace wren
