// Starts the desktop editor, a separate program.
#pragma once

namespace wren {

// True when the words after the program's name contain no command: "wren", and "wren FILE...".
bool AsksForEditor(int count, char** words);

// Replaces this process by the editor. Returns only on failure, with the exit status, after a message on standard
// error.
int OpenEditor(char** words);

} // namespace wren
