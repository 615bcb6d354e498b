// The directory that a document's commands work in.
#pragma once

class BEntry;
class PluginInterface;

// The Worksheet's directory when the document is the Worksheet, otherwise the directory of the document's file; unset
// for a document without a file. Document thread only.
void GetTargetParentDir(PluginInterface* host, BEntry& directory);
