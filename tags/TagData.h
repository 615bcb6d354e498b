// One match from the tags files.
#pragma once

#include "vetch/storage/EntryRef.h"
#include "vetch/support/Types.h"

#include <string>

// A value type, used only while a list is filled.
struct TagData {
    std::string name;
    std::string qualifier; // the enclosing class, namespace or other scope; "" for none
    EntryRef file;
    int32 line = 0; // from 1
    char kind = 0;
    bool fromSystemTags = false;
};
