// The commands that users can name and bind to keys.
#pragma once

class PluginInterface;

void RegisterCommands(PluginInterface* host); // tells the host their names and help texts

// Does nothing for a name that is none of the plug-in's, or null.
void RunCommand(PluginInterface* host, const char* name);
