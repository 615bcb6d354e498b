// The keys of commands, as Preferences stores them.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace wren {

using CommandKeys = std::vector<std::pair<std::string, std::string>>; // as in PreferenceValues::keys

CommandKeys DefaultKeys();

// Whether the text is a key, alone or with "Ctrl+", "Shift+", "Alt+" and "Meta+" before it.
bool IsKey(const std::string& text);

// Whether this key types or moves in a text: characters, arrows and the like, alone or with "Shift+". No command can
// have it.
bool IsForTexts(const std::string& key);

// Replaces the keys of the commands that the text names ("DeclarationLookup=F12 GoBack=") in the default ones. Answers
// what makes no sense, with '*keys' untouched, or "".
std::string ReadKeys(const std::string& text, CommandKeys* keys);

// The commands whose keys are not the default ones; ReadKeys() of it gives InOrder(keys).
std::string WrittenKeys(const CommandKeys& keys);

// The same, with the commands that have keys by default first, and no key twice for a command.
CommandKeys InOrder(const CommandKeys& keys);

} // namespace wren
