// Finds a document's tags files, and matches paths with include-style names.
#pragma once

class BEntry;
class PluginInterface;

// Sets 'entry', a directory, to the nearest "tags" at or above it, of any kind. Unsets it and returns false when there
// is none or the directory cannot be opened.
bool FindTags(BEntry* entry);

// Sets 'entry' to the path of the user's system tags file; true when the file exists. Without a home directory it
// prints a message on standard output and returns false; 'entry' is unchanged.
bool FindSystemTags(BEntry* entry);

// The same for the file at 'path', in place of the user's own.
bool FindSystemTags(BEntry* entry, const char* path);

// Both files for the current document, or for a directory; true when at least one exists. A missing local file gives an
// unset entry.
bool FindTags(PluginInterface* host, BEntry& localTags, BEntry& systemTags); // document thread only
bool FindTags(const char* directory, BEntry& localTags, BEntry& systemTags);

// As FindTags for the current document, but without either file it asks the user whether to make them. Returns false
// then, whatever the answer: the user repeats the command later. Document thread only.
//
// Defined in generate/, a higher floor.
bool FindOrCreateTags(PluginInterface* host, BEntry& localTags, BEntry& systemTags);

// True when the suffix ends the path in whole components: "bc.h" ends "/a/bc.h", "c.h" does not.
bool PathEndsWith(const char* path, int pathLength, const char* suffix, int suffixLength);

// True when an include-style name matches the path: as its end, or as "Framework/Header.h" for a framework's header.
bool MatchesPath(const char* path, int pathLength, const char* pattern, int patternLength);
