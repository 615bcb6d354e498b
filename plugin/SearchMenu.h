// The plug-in's part of the menu bar: three items at the end of the menu "Search".
#pragma once

class PluginInterface;

// Event handlers; results as for PluginMain. They do nothing without a menu "Search". Document thread.
long MenuBarBuilt(PluginInterface* host);
long MenusAboutToShow(PluginInterface* host);
