// The framework's updates, carried out on what stands on the screen.
#pragma once

#include "vetch/display/Update.h"

namespace wren {

class Peers;

// An update of a window or view that is gone does nothing. GUI thread.
void CarryOut(const vetch::Update& update, Peers& peers);

} // namespace wren
