// The program's commands. Each function adds one to the command line; the command stores its exit status in '*status'.
#pragma once

namespace CLI {
class App;
}

namespace wren {

void AddCompleteCommand(CLI::App& app, int* status);
void AddLookupCommand(CLI::App& app, int* status);
void AddTagsCommand(CLI::App& app, int* status);

} // namespace wren
