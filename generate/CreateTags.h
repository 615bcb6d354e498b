// Making tags files, or telling the user how to.
//
// Every request is made and forgotten: its command lines run on a thread of their own, one after the other, and nothing
// tells when they have ended, or whether they did what they should. All operations are called on the document thread
// and return at once.
#pragma once

namespace vetch {
struct ShellRequest;
}

class BEntry;
class BMessage;
class PluginInterface;

// Has tags made in 'directory' by the command line 'main' and, unless it is null, 'second'; see TagTemplates.h. They
// write to a temporary file, which is moved to its place at the end.
void CreateTags(PluginInterface* host, const BEntry& directory, const char* main, const char* second);
// The same, when nobody asked for it: 'request' tells the host why.
void CreateTags(PluginInterface* host, const BEntry& directory, const char* main, const char* second,
                const vetch::ShellRequest& request);
void CreateTags(PluginInterface* host, bool system,
                bool local); // of the system, and of the document's directory, at once

// Pastes the command lines into the Worksheet instead of running them. While 'hint' is true, and the tags program is
// not installed, how to install it comes first; 'hint' is false afterwards.
void HelpCreateTags(PluginInterface* host, const BEntry& directory, const char* main, const char* second, bool& hint);
void HelpCreateTags(PluginInterface* host, bool system, bool local);

void CreateLocalTags(PluginInterface* host);         // asks for the directory
void CreateOrUpdateLocalTags(PluginInterface* host); // where the document's tags file is; asks when there is none

// The directory that the user chose, as "refs" in the file panel's message; without it, nothing happens.
void HandleCreateTagsDirectorySelected(PluginInterface* host, const BMessage* message);
