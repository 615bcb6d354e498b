#include "tags/TargetDirectory.h"

#include "plugin/PluginInterface.h"
#include "vetch/storage/BEntry.h"

#include <memory>

void GetTargetParentDir(PluginInterface* host, BEntry& directory)
{
    if (host->IsWorksheet()) {
        const std::unique_ptr<char[]> expanded(host->ExpandVariables("$WORKSHEET_DIR", -1));
        directory.SetTo(expanded.get(), true);
        return;
    }
    const BEntry document(host->DocumentRef(), true);
    if (document.GetParent(&directory) != B_OK)
        directory.Unset();
}
