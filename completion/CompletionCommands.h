// The completion commands.
#pragma once

class BMessage;
class PluginInterface;

// All are called on the document thread during a call of PluginMain, with no palette's lock held.

// The explicit command: inserts what all candidates have in common behind what is typed, or else lists them; beeps when
// there is nothing to choose from. Without any tags file it offers to make some. Palettes have been closed before.
void SelectionSuggestCompletions(PluginInterface* host);

// While an identifier is typed: shows, refills, moves or closes the list of candidates, and never edits. Leaves it as
// it is while the names are still being loaded.
void SelectionAutoSuggestCompletions(PluginInterface* host);

// The user chose an entry: its text is the string "completion" of 'message'.
void CompletionSelected(PluginInterface* host, const BMessage* message);
