// The two functions by which the host reaches the plug-in. They are all that its library exports.
#pragma once

class PluginInterface;

#define DECLARATION_EXPORT extern "C" __attribute__((visibility("default")))

// Handles one event of the host's; 'host' is valid for the length of the call. Document thread only.
//
// 0: not handled, the host goes on with its own handling; 1: handled; 2: handled, and the user's input that caused it
// is used up. An event that the plug-in does not know answers 0.
DECLARATION_EXPORT long PluginMain(long event, PluginInterface* host);

// What the plug-in is for, in a few lines. The text lives as long as the library.
DECLARATION_EXPORT const char* PluginHelp();
