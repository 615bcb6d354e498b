// Looks up the declarations and definitions of the symbol that the user points at.
#pragma once

#include <string>

class BEntry;
class PluginInterface;

// The kinds of tags that count. Any other number means kLookUpDefinitions.
enum LookupType : long { kLookUpAny = 0, kLookUpDeclarations = 1, kLookUpDefinitions = 2 };

// All run on the document thread, during a call of PluginMain.

// Looks up the symbol at the selection. Without a symbol, or with 'forceDialog', opens the symbol entry dialog, which
// lists tags of every kind. Without tags files it only offers to make some.
void SelectionSymbolLookup(PluginInterface* host, bool forceDialog, LookupType type);

// Looks up the symbol at an offset; does nothing without one.
void SymbolLookupAt(PluginInterface* host, long offset, LookupType type);

// Opens a single match, lists several next to 'patternStart', or beeps without one; then rebuilds stale tags files if
// the settings say so.
void LookUpPattern(PluginInterface* host, const BEntry* localTags, const BEntry* systemTags, const std::string& pattern,
                   long patternStart, LookupType type);
