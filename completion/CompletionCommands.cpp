#include "completion/CompletionCommands.h"

// Completion is not offered yet. What the user sees of it is that nothing happens.

void SelectionSuggestCompletions(PluginInterface*) {}

void SelectionAutoSuggestCompletions(PluginInterface*) {}

void CompletionSelected(PluginInterface*, const BMessage*) {}
