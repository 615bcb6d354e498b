// Where a document's tags files are, and which paths an include-style name means.
#pragma once

class BEntry;
class PluginInterface;

// Sets 'entry', a directory, to the nearest "tags" at or above it, of whatever kind; unset, and false, when there is
// none or the directory cannot be opened.
bool FindTags(BEntry* entry);

// Sets 'entry' to the user's system tags file, there or not, and tells whether it is. Without a home directory it says
// so on standard output, leaves 'entry' alone and answers false.
bool FindSystemTags(BEntry* entry);

// Both files for the current document, or for a directory; true when at least one is there. A local file that is not
// there gives an unset entry.
bool FindTags(PluginInterface* host, BEntry& localTags, BEntry& systemTags); // document thread only
bool FindTags(const char* directory, BEntry& localTags, BEntry& systemTags);

// As FindTags for the current document, but when there is neither file the user is asked whether to make them; false
// all the same, whatever the answer: the command is given again once they are there. Document thread only.
//
// Defined in generate/, which stands above this folder.
bool FindOrCreateTags(PluginInterface* host, BEntry& localTags, BEntry& systemTags);

// Whether the suffix is the end of the path, in whole components: "bc.h" ends "/a/bc.h", "c.h" does not.
bool PathEndsWith(const char* path, int pathLength, const char* suffix, int suffixLength);

// Whether an include-style name means the path: its end, or "Framework/Header.h" for a header of that framework.
bool MatchesPath(const char* path, int pathLength, const char* pattern, int patternLength);
