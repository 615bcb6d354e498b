// The visible state: the document, the plug-in's windows, the menu.
#pragma once

#include "wren/script/ScriptLog.h"

namespace wren {

class Host;

// Call it on a settled session.
Json StateJson(Host& host, const std::vector<vetch::HeadlessDisplay::WindowState>& windows);

} // namespace wren
