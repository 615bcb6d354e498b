// Sees what the plug-in does to the editor.
#pragma once

#include "wren/core/HostChange.h"

namespace wren {

// A face that shows what the plug-in changes follows it from here; others keep a log. Document thread.
class HostObserver {
public:
    virtual ~HostObserver() = default;

    virtual void Changed(const HostChange& change) = 0; // right after it was done
};

} // namespace wren
