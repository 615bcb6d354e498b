// Dispatches the host's events.
#pragma once

class PluginInterface;

// As PluginMain, but exceptions pass through.
long HandleEvent(long event, PluginInterface* host);
