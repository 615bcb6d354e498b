// Finds the files for an include-style name.
#pragma once

class PluginInterface;

// Searches the tags files for the record's symbol ("AppKit/NSView.h") and adds the files to its message as "refs". The
// record's name is the directory whose tags files are searched. True when there was a file. The first call does not
// find the system's files, which load in the background. Document thread.
bool AddFilesOfSymbol(PluginInterface* host);
