// One whole key stroke in a document.
#pragma once

#include "wren/core/PluginEvents.h"

#include <string>

namespace wren {

class Host;

// Offers the stroke to the plug-in and to the commands bound to keys. When neither takes it, applies it to the current
// document and notifies the plug-in. 'key' is the stroke's name for StrokeOf(). Needs a current document. Returns the
// plug-in's answer to the key. Document thread.
long PressKey(Host& host, const std::string& key, const KeyStroke& stroke);

} // namespace wren
