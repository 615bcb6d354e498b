#include "tags/TargetDirectory.h"

#include "plugin/PluginInterface.h"
#include "vetch/storage/BEntry.h"

#include <memory>

void GetTargetParentDir(PluginInterface* plugin, BEntry& directory)
{
    if (plugin->IsWorksheet()) {
        const std::unique_ptr<char[]> expanded(plugin->ExpandVariables("$WORKSHEET_DIR", -1));
        directory.SetTo(expanded.get(), true);
        return;
    }
    const BEntry document(plugin->DocumentRef(), true);
    if (document.GetParent(&directory) != B_OK)
        directory.Unset();
}
