// One whole key stroke in a document.
#pragma once

#include "wren/core/PluginEvents.h"

#include <string>

namespace wren {

class Host;

// Offers the stroke to the plug-in and to the commands bound to keys, and applies it to the current document when
// neither takes it; the plug-in then hears what it did. 'key' is the stroke's, as StrokeOf() reads it. There is a
// current document. Answers what the plug-in said to the key. Document thread.
long PressKey(Host& host, const std::string& key, const KeyStroke& stroke);

} // namespace wren
