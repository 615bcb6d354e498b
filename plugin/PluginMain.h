// The host's two entry points into the plug-in. The library exports nothing else.
#pragma once

class PluginInterface;

#define DECLARATION_EXPORT extern "C" __attribute__((visibility("default")))

// Handles one event of the host; 'host' is valid during the call. Document thread only.
//
// 0: not handled, the host continues; 1: handled; 2: handled, and the user's input is consumed. An unknown event
// returns 0.
// is used up. An event that the plug-in does not know answers 0.
DECLARATION_EXPORT long PluginMain(long event, PluginInterface* host);

// Describes the plug-in in a few lines. The text lives as long as the library.
DECLARATION_EXPORT const char* PluginHelp();
