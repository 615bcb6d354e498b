// A list entry that shows one match and keeps its position.
#pragma once

#include "vetch/interface/BListItem.h"
#include "windows/DeclarationEntry.h"

#include <string>

// Builds its text once: "class View - view.h", or with the directory "class View : view.h - ~/src/lib".
class LookupItem : public BStringItem {
public:
    LookupItem(const std::string& name, const std::string& qualifier, char kind, int line, const EntryRef& file,
               bool showDirectory);
    ~LookupItem() override;

    const DeclarationEntry& Entry() const { return entry; }

private:
    const DeclarationEntry entry;
};

// A directory's path, shortened for display.
std::string MakeDisplayPath(const std::string& path);
