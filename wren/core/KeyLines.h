// The keys of commands, in the form that Preferences stores.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace wren {

using CommandKeys = std::vector<std::pair<std::string, std::string>>; // like PreferenceValues::keys

// byMeaning: F12 and Control-F12 are left to what goes to a name's meaning, and the plug-in's lookups have other keys.
CommandKeys DefaultKeys(bool byMeaning = false);

// The keys with the commands that have their defaults of one sort given those of the other.
CommandKeys WithDefaults(const CommandKeys& keys, bool fromByMeaning, bool toByMeaning);

// Whether the text is a key, alone or after "Ctrl+", "Shift+", "Alt+" and "Meta+".
bool IsKey(const std::string& text);

// Whether this key types or moves in a text: characters, arrows and the like, alone or after "Shift+". Such a key
// cannot be bound.
bool IsForTexts(const std::string& key);

// Replaces the default keys of the commands that the text names ("DeclarationLookup=F12 GoBack="). Returns the part
// that is invalid, with '*keys' unchanged, or "".
std::string ReadKeys(const std::string& text, CommandKeys* keys, bool byMeaning = false);

// The keys of menu items that the user has changed, by item ("File.Close"); none: the item has no keys. The other items
// have their usual keys, which only the menus know.
using ItemKeys = std::map<std::string, std::vector<std::string>>;

// Whether the key can choose a menu item: a key of commands, or one that cuts wherever there is a text.
bool MayChooseItem(const std::string& key);

// "File.Close=F8,Ctrl+W Edit.Undo=", as ReadKeys() and WrittenKeys().
std::string ReadItemKeys(const std::string& text, ItemKeys* keys);
std::string WrittenItemKeys(const ItemKeys& keys);

// The commands with keys other than the default; ReadKeys() turns it back into InOrder(keys).
std::string WrittenKeys(const CommandKeys& keys, bool byMeaning = false);

// The same keys, commands with default keys first, and no key twice for a command.
CommandKeys InOrder(const CommandKeys& keys);

} // namespace wren
