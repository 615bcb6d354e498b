// Observes the plug-in's changes to the editor.
#pragma once

#include "wren/core/HostChange.h"

namespace wren {

// A face that shows the changes implements this; others keep a log. Document thread.
class HostObserver {
public:
    virtual ~HostObserver() = default;

    virtual void Changed(const HostChange& change) = 0; // right after the change
};

} // namespace wren
