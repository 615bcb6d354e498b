// "wren lsp", one of the program's commands.
#pragma once

namespace CLI {
class App;
}

namespace wren::lsp {

void AddLspCommand(CLI::App& app, int* status); // stores its exit status in '*status'

} // namespace wren::lsp
