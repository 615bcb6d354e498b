// The program's commands about the index of symbols. Each function adds one to the command line; the command stores its
// exit status in '*status'.
#pragma once

namespace CLI {
class App;
}

namespace wren {

void AddPlaceCommands(CLI::App& app, int* status); // definition, declaration, references, implementations
void AddExplainCommand(CLI::App& app, int* status);
void AddFindCommand(CLI::App& app, int* status);
void AddOutlineCommand(CLI::App& app, int* status);
void AddGraphCommand(CLI::App& app, int* status);
void AddIndexCommand(CLI::App& app, int* status);

} // namespace wren
