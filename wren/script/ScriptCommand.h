// "wren script", one of the program's commands.
#pragma once

namespace CLI {
class App;
}

namespace wren {

void AddScriptCommand(CLI::App& app, int* status); // stores its exit status in '*status'

} // namespace wren
