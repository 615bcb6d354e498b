// A list entry that shows one match and keeps its position.
#pragma once

#include "vetch/interface/BListItem.h"
#include "windows/DeclarationEntry.h"

#include <string>

// Builds its text once (see MatchText).
class LookupItem : public BStringItem {
public:
    LookupItem(const std::string& name, const std::string& qualifier, char kind, int line, const EntryRef& file,
               bool showDirectory);
    ~LookupItem() override;

    const DeclarationEntry& Entry() const { return entry; }

private:
    const DeclarationEntry entry;
};
