// What the commands of the program have in common.
#pragma once

#include "wren/cli/AskedEditor.h"

#include <string>

namespace CLI {
class App;
}

namespace wren {

class OutputAside;

// What tags and names of files say, without what a terminal would take for commands: each control character but tabs and
// line breaks is a "?".
std::string ForTerminal(std::string text);

void Complain(const std::string& text); // on standard error

// False, having complained, when it could not be written; 'what' is the text in some words ("the matches").
bool WriteOrComplain(OutputAside& output, const std::string& text, const char* what);

// Adds the options that say what the editor works with. 'options' outlives the parsing.
void AddEditorOptions(CLI::App& command, EditorOptions& options);

} // namespace wren
