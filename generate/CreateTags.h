// Making tags files, or telling the user how to.
#pragma once

class BEntry;
class BMessage;
class PluginInterface;

// Tags are not made yet: every operation here is reached from where it belongs, and does nothing. All are called on the
// document thread and return at once.

// Has tags made in 'directory' by the command line 'main' and, unless it is null, 'second'; see TagTemplates.h.
void CreateTags(PluginInterface* pi, const BEntry& directory, const char* main, const char* second);
void CreateTags(PluginInterface* pi, bool system, bool local); // of the system, and of the document's directory

// Pastes the command lines into the Worksheet instead of running them.
void HelpCreateTags(PluginInterface* pi, bool system, bool local);

void CreateLocalTags(PluginInterface* pi);         // asks for the directory
void CreateOrUpdateLocalTags(PluginInterface* pi); // where the document's tags file is; asks when there is none

// The directory that the user chose, as "refs" in the file panel's message.
void HandleCreateTagsDirectorySelected(PluginInterface* pi, const BMessage* message);
