// The completion commands.
#pragma once

class BMessage;
class PluginInterface;

// Call all of these on the document thread during a call of PluginMain, with no palette's lock held.

// The explicit command: inserts the candidates' common continuation, or else lists them; beeps without candidates.
// Without tags files it offers to make some. Palettes are closed before.
void SelectionSuggestCompletions(PluginInterface* host);

// While an identifier is typed: shows, refills, moves or closes the list of candidates, and never edits. While the
// names are loading, it changes nothing.
void SelectionAutoSuggestCompletions(PluginInterface* host);

// Handles the user's choice: its text is the string "completion" of 'message'.
void CompletionSelected(PluginInterface* host, const BMessage* message);

// Quits the palettes, the pop-ups beside a document: the lookup results, then the completions, if open. The destructor
// of each clears its global. The symbol entry dialog is not a palette and stays.
void CloseAnyPalettes();

// What events call of this folder. Tests put functions of their own here, which record the calls.
struct CompletionActions {
    void (*suggest)(PluginInterface* host) = SelectionSuggestCompletions;
    void (*autoSuggest)(PluginInterface* host) = SelectionAutoSuggestCompletions;
    void (*selected)(PluginInterface* host, const BMessage* message) = CompletionSelected;
    long (*routeKey)(PluginInterface* host, const BMessage* keyDown);
};
extern CompletionActions gCompletionActions; // document thread
