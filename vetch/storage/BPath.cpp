#include "vetch/storage/BPath.h"

#include "vetch/storage/BEntry.h"
#include "vetch/storage/Normalise.h"

BPath::BPath(const BEntry* entry)
{
    if (entry != nullptr)
        entry->GetPath(this);
}

BPath::BPath(const char* path) : path(path == nullptr ? "" : vetch::NormalisedPath(path)) {}
