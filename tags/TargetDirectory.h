// The working directory for a document's commands.
#pragma once

class BEntry;
class PluginInterface;

// The Worksheet's directory for the Worksheet, otherwise that of the document's file; unset for a document without a
// file. Document thread only.
void GetTargetParentDir(PluginInterface* host, BEntry& directory);
