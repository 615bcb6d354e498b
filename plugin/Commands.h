// Named commands, which users bind to keys.
#pragma once

class PluginInterface;

void RegisterCommands(PluginInterface* host); // tells the host names and help texts

// Does nothing for null or an unknown name.
void RunCommand(PluginInterface* host, const char* name);
