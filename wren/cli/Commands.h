// The commands of the program: each adds itself to the command line, and leaves its exit status in '*status'.
#pragma once

namespace CLI {
class App;
}

namespace wren {

void AddCompleteCommand(CLI::App& app, int* status);
void AddLookupCommand(CLI::App& app, int* status);
void AddTagsCommand(CLI::App& app, int* status);

} // namespace wren
