// Work on a new state of an index.
#pragma once

#include "symbols/store/Store.h"

namespace symbols {

struct Attempt {
    Store::Writer& writer;
    const SnapshotPointer& before; // what the writer continues; null: from nothing
    bool isFirst = false;          // there is no complete state that can be continued
};

} // namespace symbols
