// Makes tags files, or shows the user the commands for it.
//
// Requests are not tracked: their command lines run one after the other on a new thread, and nothing reports their end
// or their success. Call all operations on the document thread; they return at once.
#pragma once

namespace vetch {
struct ShellRequest;
}

class BEntry;
class BMessage;
class PluginInterface;

// Makes tags in 'directory' with the command lines 'main' and, unless null, 'second'; see TagTemplates.h. They write to
// a temporary file, which is moved to its place at the end.
void CreateTags(PluginInterface* host, const BEntry& directory, const char* main, const char* second);
// For a request that the user did not make: 'request' gives the host the reason.
void CreateTags(PluginInterface* host, const BEntry& directory, const char* main, const char* second,
                const vetch::ShellRequest& request);
void CreateTags(PluginInterface* host, bool system,
                bool local); // both requests at once

// Pastes the command lines into the Worksheet instead of running them. If 'hint' is true and the tags program is not
// installed, pastes its installation first. Sets 'hint' to false.
void HelpCreateTags(PluginInterface* host, const BEntry& directory, const char* main, const char* second, bool& hint);
void HelpCreateTags(PluginInterface* host, bool system, bool local);

void CreateLocalTags(PluginInterface* host);         // asks for the directory
void CreateOrUpdateLocalTags(PluginInterface* host); // where the document's tags file is; asks without one

// The file panel's message holds the chosen directory as "refs"; does nothing without it.
void HandleCreateTagsDirectorySelected(PluginInterface* host, const BMessage* message);

// What the rest of the plug-in calls of these. Tests put functions of their own here, which record the calls.
struct TagsActions {
    void (*createIn)(PluginInterface* host, const BEntry& directory, const char* main, const char* second,
                     const vetch::ShellRequest& request) = CreateTags;
    void (*create)(PluginInterface* host, bool system, bool local) = CreateTags;
    void (*helpCreate)(PluginInterface* host, bool system, bool local) = HelpCreateTags;
    void (*createLocal)(PluginInterface* host) = CreateLocalTags;
    void (*createOrUpdateLocal)(PluginInterface* host) = CreateOrUpdateLocalTags;
    void (*directorySelected)(PluginInterface* host, const BMessage* message) = HandleCreateTagsDirectorySelected;

    // Whether something is at that path. Asked again at each request: the tags program may be installed meanwhile.
    bool (*exists)(const char* path);
};
extern TagsActions gTagsActions; // document thread
