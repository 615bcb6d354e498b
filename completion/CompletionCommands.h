// The completion commands.
#pragma once

class BMessage;
class PluginInterface;

// Completion is not offered yet: every operation here is reached from where it belongs, and does nothing. Called on the
// document thread during a call of PluginMain.

void SelectionSuggestCompletions(PluginInterface* host);     // the explicit command
void SelectionAutoSuggestCompletions(PluginInterface* host); // while an identifier is typed; never edits

// The user chose an entry: its text is the string "completion" of 'message'.
void CompletionSelected(PluginInterface* host, const BMessage* message);
