// From what a user points at to the declarations and definitions of it.
#pragma once

#include <string>

class BEntry;
class PluginInterface;

// Which tags count. Any other number counts as kLookUpDefinitions.
enum LookupType : long { kLookUpAny = 0, kLookUpDeclarations = 1, kLookUpDefinitions = 2 };

// All run on the document thread, inside a call of PluginMain.

// Looks up the symbol at the selection. Where there is none, or with 'forceDialog', the symbol entry dialog opens
// instead, which lists tags of every kind. Without tags files the user is offered to make some, and that is all.
void SelectionSymbolLookup(PluginInterface* host, bool forceDialog, LookupType type);

// Looks up the symbol at an offset; where there is none, nothing happens at all.
void SymbolLookupAt(PluginInterface* host, long offset, LookupType type);

// Opens the one tag that matches, lists several next to 'patternStart', or beeps when there is none; then has stale
// tags files made anew if the settings say so.
void LookUpPattern(PluginInterface* host, const BEntry* localTags, const BEntry* systemTags, const std::string& pattern,
                   long patternStart, LookupType type);
