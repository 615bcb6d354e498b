// The pop-up menu of the plug-in's button in the document window.
#pragma once

class BMenuItem;
class PluginInterface;

// Runs the menu and what the user chooses from it. Document thread.
void RunButtonMenu(PluginInterface* host);

// Shows the key that the user has bound to a named command; leaves the item alone when there is none.
void SetModifiersIfDefined(PluginInterface* host, BMenuItem* item, const char* command);
