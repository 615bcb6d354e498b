// Starting the desktop editor, which is a program of its own.
#pragma once

namespace wren {

// True when the words after the program's name ask for no command: "wren", and "wren FILE...".
bool AsksForEditor(int count, char** words);

// Becomes the editor. Returns only when that cannot be, with the exit status; why was said on standard error.
int OpenEditor(char** words);

} // namespace wren
