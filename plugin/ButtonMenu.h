// The pop-up menu of the plug-in's button in the document window.
#pragma once

class BMenuItem;
class PluginInterface;

// Opens the menu and runs the chosen command. Document thread.
void RunButtonMenu(PluginInterface* host);

// Shows the key bound to a named command; the item is unchanged when there is none.
void SetModifiersIfDefined(PluginInterface* host, BMenuItem* item, const char* command);
