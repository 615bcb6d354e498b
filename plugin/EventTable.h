// Which of the host's events does what.
#pragma once

class PluginInterface;

// As PluginMain, but lets exceptions out.
long HandleEvent(long event, PluginInterface* host);
