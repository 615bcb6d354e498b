#include "plugin/SymbolFiles.h"

#include "plugin/PluginInterface.h"
#include "tags/TagDiscovery.h"
#include "tags/Tags.h"
#include "vetch/storage/BEntry.h"

bool AddFilesOfSymbol(PluginInterface* host)
{
    if (host->name == nullptr || host->symbol == nullptr || host->message == nullptr)
        return false;
    BEntry localTags;
    BEntry systemTags;
    if (!FindTags(host->name, localTags, systemTags))
        return false;
    Tags tags(&localTags, &systemTags, host->symbol, true);
    if (!tags.Rewind())
        return false;
    bool added = false;
    std::string path;
    while (tags.NextFileMatch(path)) {
        // A relative path in a tags file is relative to the process's directory.
        const EntryRef file(path.c_str());
        added |= host->message->AddRef("refs", &file) == B_OK;
    }
    tags.Done();
    return added;
}
