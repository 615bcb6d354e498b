#include "generate/CreateTags.h"

// Tags are not made yet. What the user sees of it is that nothing happens.

void CreateTags(PluginInterface*, const BEntry&, const char*, const char*) {}

void CreateTags(PluginInterface*, bool, bool) {}

void HelpCreateTags(PluginInterface*, bool, bool) {}

void CreateLocalTags(PluginInterface*) {}

void CreateOrUpdateLocalTags(PluginInterface*) {}

void HandleCreateTagsDirectorySelected(PluginInterface*, const BMessage*) {}
