// The tag behind a list entry.
#pragma once

#include "vetch/storage/EntryRef.h"
#include "vetch/support/Types.h"

#include <string>

// A value type. A default one does not name a file; its line and kind are 0.
struct DeclarationEntry {
    std::string name;
    std::string qualifier;
    EntryRef file;
    int32 line = 0; // from 1
    char kind = 0;
};
