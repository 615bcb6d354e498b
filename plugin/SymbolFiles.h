// Which files an include-style name means.
#pragma once

class PluginInterface;

// Adds the files that the tags files know by the record's symbol ("AppKit/NSView.h") to its message, as "refs". The
// directory whose tags files are asked is the record's name. True when there was any; the first question about the
// system's files finds none of them, because they are loaded in the background. Document thread.
bool AddFilesOfSymbol(PluginInterface* host);
